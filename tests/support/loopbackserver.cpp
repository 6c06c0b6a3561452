#include "loopbackserver.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace {

// Reads up to the end of the head, then as much body as it announces.
QByteArray Receive(int connection)
{
    QByteArray data;
    char chunk[4096];
    ssize_t got = 0;
    while (!data.contains("\r\n\r\n") && (got = recv(connection, chunk, sizeof chunk, 0)) > 0)
        data.append(chunk, int(got));
    const int headEnd = data.indexOf("\r\n\r\n") + 4;
    const int at = data.toLower().indexOf("\r\ncontent-length:");
    const int length = at >= 0 && at < headEnd ? data.mid(at + 17, data.indexOf('\r', at + 2) - at - 17).trimmed().toInt() : 0;
    while (data.size() < headEnd + length && (got = recv(connection, chunk, sizeof chunk, 0)) > 0)
        data.append(chunk, int(got));
    return data;
}

} // namespace

LoopbackServer::LoopbackServer()
    : listener(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    bind(listener, reinterpret_cast<sockaddr *>(&address), size);
    listen(listener, 8);
    getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size);
    port = QByteArray::number(ntohs(address.sin_port));
    thread = std::thread(&LoopbackServer::Serve, this);
}

// Shutting the listening socket down wakes the thread from accept().
LoopbackServer::~LoopbackServer()
{
    shutdown(listener, SHUT_RDWR);
    thread.join();
    close(listener);
}

void LoopbackServer::Answer(const QByteArray &path, const QByteArray &body, const QByteArray &status)
{
    const std::lock_guard<std::mutex> lock(mutex);
    replies.insert(path, {status, body});
}

QStringList LoopbackServer::TakeRequests()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return std::exchange(requests, QStringList());
}

void LoopbackServer::Serve()
{
    int connection = -1;
    while ((connection = accept(listener, nullptr, nullptr)) >= 0) {
        QByteArray request = Receive(connection).replace("127.0.0.1:" + port, "127.0.0.1:PORT");
        QPair<QByteArray, QByteArray> reply;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            reply = replies.value(request.split(' ').value(1), {"404 Not Found", QByteArray()});
            requests.append(QString::fromUtf8(request.replace("\r\n", "\n").trimmed()));
        }
        const QByteArray answer = "HTTP/1.1 " + reply.first + "\r\nContent-Length: "
                                  + QByteArray::number(reply.second.size()) + "\r\nConnection: close\r\n\r\n" + reply.second;
        if (!reply.first.isEmpty())
            send(connection, answer.constData(), size_t(answer.size()), MSG_NOSIGNAL);
        close(connection);
    }
}
