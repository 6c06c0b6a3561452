#include "loopbackserver.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

QByteArray ReceiveRequest(int connection)
{
    QByteArray data;
    char chunk[4096];
    qint64 wanted = -1;
    while (wanted < 0 || data.size() < wanted) {
        const ssize_t got = recv(connection, chunk, sizeof chunk, 0);
        if (got <= 0)
            break;
        data.append(chunk, int(got));
        const int headEnd = data.indexOf("\r\n\r\n");
        if (wanted < 0 && headEnd >= 0) {
            const int at = data.toLower().indexOf("\r\ncontent-length:");
            const qint64 length = at >= 0 && at < headEnd
                                      ? data.mid(at + 17, data.indexOf('\r', at + 2) - at - 17).trimmed().toLongLong()
                                      : 0;
            wanted = headEnd + 4 + length;
        }
    }
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

QByteArray LoopbackServer::BaseUrl() const
{
    return "http://127.0.0.1:" + port + "/api/";
}

void LoopbackServer::Answer(const QByteArray &path, const QByteArray &body, const QByteArray &status)
{
    const std::lock_guard<std::mutex> lock(mutex);
    replies.insert(path, {status, body});
}

QStringList LoopbackServer::Requests() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return requests;
}

void LoopbackServer::ClearRequests()
{
    const std::lock_guard<std::mutex> lock(mutex);
    requests.clear();
}

void LoopbackServer::Serve()
{
    int connection = -1;
    while ((connection = accept(listener, nullptr, nullptr)) >= 0) {
        Handle(connection);
        close(connection);
    }
}

void LoopbackServer::Handle(int connection)
{
    QByteArray request = ReceiveRequest(connection);
    request.replace("127.0.0.1:" + port, "127.0.0.1:PORT");
    const QByteArray line = request.left(request.indexOf("\r\n"));
    const QByteArray path = line.split(' ').value(1);
    Reply reply{"404 Not Found", QByteArray()};
    {
        const std::lock_guard<std::mutex> lock(mutex);
        requests.append(QString::fromUtf8(request.replace("\r\n", "\n").trimmed()));
        reply = replies.value(path, reply);
    }
    if (reply.status.isEmpty())
        return;
    const QByteArray answer = "HTTP/1.1 " + reply.status + "\r\nContent-Length: " + QByteArray::number(reply.body.size())
                              + "\r\nConnection: close\r\n\r\n" + reply.body;
    send(connection, answer.constData(), size_t(answer.size()), MSG_NOSIGNAL);
}
