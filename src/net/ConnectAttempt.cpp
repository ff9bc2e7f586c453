#include "net/ConnectAttempt.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

ConnectAttempt::ConnectAttempt(const QHostAddress &address, quint16 port)
{
    sockaddr_storage target{};
    socklen_t length = 0;
    if (address.protocol() == QAbstractSocket::IPv4Protocol) {
        auto *ipv4 = reinterpret_cast<sockaddr_in *>(&target);
        ipv4->sin_family = AF_INET;
        ipv4->sin_port = htons(port);
        ipv4->sin_addr.s_addr = htonl(address.toIPv4Address());
        length = sizeof(sockaddr_in);
    } else if (address.protocol() == QAbstractSocket::IPv6Protocol) {
        auto *ipv6 = reinterpret_cast<sockaddr_in6 *>(&target);
        ipv6->sin6_family = AF_INET6;
        ipv6->sin6_port = htons(port);
        const Q_IPV6ADDR bytes = address.toIPv6Address();
        std::memcpy(&ipv6->sin6_addr, &bytes, sizeof(bytes));
        ipv6->sin6_scope_id = address.scopeId().toUInt();
        length = sizeof(sockaddr_in6);
    } else {
        return;
    }
    descriptor = ::socket(target.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return;
    if (::connect(descriptor, reinterpret_cast<const sockaddr *>(&target), length) == 0)
        state = State::Connected;
    else if (errno == EINPROGRESS)
        state = State::Pending;
}

ConnectAttempt::~ConnectAttempt()
{
    if (descriptor >= 0)
        ::close(descriptor);
}

ConnectAttempt::State ConnectAttempt::Wait(int maxWaitMs)
{
    if (state != State::Pending)
        return state;
    pollfd watched{descriptor, POLLOUT, 0};
    if (::poll(&watched, 1, maxWaitMs) <= 0)
        return state;
    int error = 0;
    socklen_t size = sizeof(error);
    if (::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size) != 0 || error != 0)
        state = State::Failed;
    else
        state = State::Connected;
    return state;
}

bool ConnectAttempt::HandTo(QAbstractSocket &socket)
{
    if (state != State::Connected || !socket.setSocketDescriptor(descriptor))
        return false;
    descriptor = -1;
    return true;
}
