#pragma once

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QStringList>

#include <mutex>
#include <thread>

// A real HTTP server on 127.0.0.1, on a port and a thread of its own, for
// the cloud client to talk to. It records each request as it came over the
// wire and answers by path from scripted replies (404 and no body for other
// paths), one connection at a time, closed after the reply.
class LoopbackServer
{
public:
    LoopbackServer();
    ~LoopbackServer();

    // "http://127.0.0.1:<port>/api/", in the form of the service's address.
    QByteArray BaseUrl() const { return "http://127.0.0.1:" + port + "/api/"; }
    // With an empty status the connection is closed with no reply at all.
    void Answer(const QByteArray &path, const QByteArray &body, const QByteArray &status = "200 OK");
    // The requests since the last call: request line, header lines and,
    // after a blank line, the body, joined by "\n"; the port reads "PORT".
    QStringList TakeRequests();

private:
    void Serve();

    int listener;
    QByteArray port;
    std::mutex mutex;
    QHash<QByteArray, QPair<QByteArray, QByteArray>> replies;
    QStringList requests;
    std::thread thread;
};
