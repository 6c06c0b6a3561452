#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>

#include <mutex>
#include <thread>

// A real HTTP server on 127.0.0.1, on a port of its own and a thread of its
// own, for the cloud client to talk to. It records each request as it came
// over the wire and answers by path from scripted replies (404 and no body
// for any other path), one connection at a time, closed after the reply.
class LoopbackServer
{
public:
    LoopbackServer();
    ~LoopbackServer();

    // "http://127.0.0.1:<port>/api/", in the form of the service's address.
    QByteArray BaseUrl() const;
    void Answer(const QByteArray &path, const QByteArray &body, const QByteArray &status = "200 OK");
    // The connection to this path is closed with no reply at all.
    void HangUp(const QByteArray &path) { Answer(path, QByteArray(), QByteArray()); }
    // Each request as its request line, its header lines and, after a blank
    // line, its body, all joined by "\n"; the port reads "PORT".
    QStringList Requests() const;
    void ClearRequests();

private:
    struct Reply
    {
        QByteArray status;
        QByteArray body;
    };
    void Serve();
    void Handle(int connection);

    int listener = -1;
    QByteArray port;
    mutable std::mutex mutex;
    QHash<QByteArray, Reply> replies;
    QStringList requests;
    std::thread thread;
};
