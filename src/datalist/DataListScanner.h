#pragma once

#include "datalist/DataListStream.h"

#include <vector>

// Scans a list file in the exact form the program writes (the prolog of DataList::Save, plain
// string values, the predefined entities and character references) straight from its bytes, in
// chunks, handing each item to a visitor. It accepts nothing that DataList's own reader would
// read differently: whatever falls outside that form, including every damaged file, is left to
// that reader, which names the fault.
class DataListScanner {
public:
    enum class Outcome { Scanned, LeftToReader, Stopped }; // Stopped: the visitor wanted no more

    DataListScanner(QIODevice &device, DataList &properties, DataListItemVisitor &visitor);
    Outcome Run();

private:
    enum class Step { Done, NeedMore, Refused };
    enum class State { Prolog, TopLevel, Items, Tail, Finished };

    // Each step reads one unit (the prolog, a top-level entry, an item, the end) from the bytes
    // at hand; only a complete unit moves the position on and changes the state.
    Step Prolog();
    Step TopLevelEntry();
    Step ItemOrEnd();
    Step Tail();
    Step ReadItem(const char *&p);
    Step ReadKey(const char *&p, QByteArrayView &key);
    Step ReadString(const char *&p, QByteArrayView &value);
    Step ReadText(const char *&p, QByteArrayView &text);
    // 1 when the literal is at p (p then follows it), 0 when not, -1 when the bytes end too soon
    // to tell.
    int Match(const char *&p, QByteArrayView literal) const;
    // The same as a step: Done when the literal is there.
    Step Expect(const char *&p, QByteArrayView literal) const;
    void SkipSpace(const char *&p) const;
    const char *End() const { return buffer.constData() + buffer.size(); }
    void Commit(const char *p, State next);
    bool Resolve(QByteArrayView raw, QByteArray &resolved) const;
    bool Refill();

    QIODevice &device;
    DataList &properties;
    DataListItemVisitor &visitor;
    QByteArray buffer;
    qsizetype position = 0;
    State state = State::Prolog;
    bool atEnd = false;
    bool sawItems = false;
    std::vector<QByteArray> resolved; // texts with references, resolved; reused from item to item
    std::size_t resolvedUsed = 0;
    std::vector<StreamedEntry> entries;
};
