#pragma once

#include <QUrl>
#include <QWidget>

class QLineEdit;
class QPushButton;
class QWebEngineView;

// The map both map dialogs show: the search line (TextMapSearch, ButtonGo) over the embedded
// browser. It shows the shared map state in the locator page and follows the page's reports of
// where the user has moved; StateChanged tells the dialog.
class MapView : public QWidget {
    Q_OBJECT
public:
    explicit MapView(QWidget *parent = nullptr);

    // Shows the shared state: the connecting page first, then the map page filled with it.
    void ShowMap();
    // Looks the text up off the interface thread and shows the place, or tells it was not found.
    void Search(const QString &text);
    // Lets the page know the photos' places have changed (Orvana's own page fetches them again).
    void RefreshPhotos();
    QWebEngineView *Browser() const { return browser; }

signals:
    void StateChanged();

private:
    void Loaded(bool ok);
    void Follow(const QUrl &url);

    QLineEdit *TextMapSearch;
    QPushButton *ButtonGo;
    QWebEngineView *browser;
    QUrl pendingMap;
};

// The page of Resources, as a file address.
QUrl LocalMapPage(const QString &name);
