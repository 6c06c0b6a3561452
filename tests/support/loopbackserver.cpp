// SPDX-License-Identifier: GPL-3.0-or-later
#include "loopbackserver.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
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
    streams.remove(path);
    replies.insert(path, {status, body});
}

void LoopbackServer::Stream(const QByteArray &path, const QByteArray &chunk, int count, int pauseMs)
{
    const std::lock_guard<std::mutex> lock(mutex);
    replies.remove(path);
    streams.insert(path, {chunk, count, pauseMs});
}

QStringList LoopbackServer::TakeRequests()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return std::exchange(requests, QStringList());
}

QList<int> LoopbackServer::TakeHangUps()
{
    std::unique_lock<std::mutex> lock(mutex);
    streamEnded.wait(lock, [this] { return !streaming; });
    return std::exchange(hangUps, QList<int>());
}

// A client that has hung up makes a later send fail.
int LoopbackServer::SendStream(int connection, const Streamed &stream) const
{
    const auto start = std::chrono::steady_clock::now();
    const QByteArray head = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
    if (send(connection, head.constData(), size_t(head.size()), MSG_NOSIGNAL) < 0)
        return 0;
    for (int i = 0; i < stream.count; ++i) {
        if (i > 0 && stream.pauseMs > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(stream.pauseMs));
        if (send(connection, stream.chunk.constData(), size_t(stream.chunk.size()), MSG_NOSIGNAL) < 0)
            return int(std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count());
    }
    return -1;
}

void LoopbackServer::Serve()
{
    int connection = -1;
    while ((connection = accept(listener, nullptr, nullptr)) >= 0) {
        QByteArray request = Receive(connection).replace("127.0.0.1:" + port, "127.0.0.1:PORT");
        const QByteArray path = request.split(' ').value(1);
        QPair<QByteArray, QByteArray> reply;
        Streamed stream{};
        bool streamed = false;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            reply = replies.value(path, {"404 Not Found", QByteArray()});
            streamed = streams.contains(path);
            streaming = streamed;
            stream = streams.value(path);
            requests.append(QString::fromUtf8(request.replace("\r\n", "\n").trimmed()));
        }
        if (streamed) {
            const int hangUp = SendStream(connection, stream);
            close(connection);
            const std::lock_guard<std::mutex> lock(mutex);
            hangUps.append(hangUp);
            streaming = false;
            streamEnded.notify_all();
            continue;
        }
        const QByteArray answer = "HTTP/1.1 " + reply.first + "\r\nContent-Length: "
                                  + QByteArray::number(reply.second.size()) + "\r\nConnection: close\r\n\r\n" + reply.second;
        if (!reply.first.isEmpty())
            send(connection, answer.constData(), size_t(answer.size()), MSG_NOSIGNAL);
        close(connection);
    }
}
