// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QPair>
#include <QStringList>

#include <condition_variable>
#include <mutex>
#include <thread>

// A real HTTP server on 127.0.0.1, on a port and a thread of its own, for
// the cloud client to talk to. It records each request as it came over the
// wire and answers by path from scripted replies or streams (404 and no
// body for other paths), one connection at a time, closed after the reply.
class LoopbackServer
{
public:
    LoopbackServer();
    ~LoopbackServer();

    // "http://127.0.0.1:<port>/api/", in the form of the service's address.
    QByteArray BaseUrl() const { return "http://127.0.0.1:" + port + "/api/"; }
    // With an empty status the connection is closed with no reply at all.
    void Answer(const QByteArray &path, const QByteArray &body, const QByteArray &status = "200 OK");
    // Answers with a head that gives no length and then `chunk` `count`
    // times, `pauseMs` milliseconds apart: a reply without end or a slow
    // one. It stops early when the client hangs up.
    void Stream(const QByteArray &path, const QByteArray &chunk, int count, int pauseMs = 0);
    // The requests since the last call: request line, header lines and,
    // after a blank line, the body, joined by "\n"; the port reads "PORT".
    QStringList TakeRequests();
    // For each streamed reply since the last call, by the server's clock:
    // the milliseconds from the request to the client hanging up, or -1
    // when the client took the whole stream. Waits for a stream under way
    // to end, which it does soon after the client has hung up.
    QList<int> TakeHangUps();

private:
    struct Streamed
    {
        QByteArray chunk;
        int count;
        int pauseMs;
    };

    void Serve();
    int SendStream(int connection, const Streamed &stream) const;

    int listener;
    QByteArray port;
    std::mutex mutex;
    std::condition_variable streamEnded;
    bool streaming = false;
    QHash<QByteArray, QPair<QByteArray, QByteArray>> replies;
    QHash<QByteArray, Streamed> streams;
    QStringList requests;
    QList<int> hangUps;
    std::thread thread;
};
