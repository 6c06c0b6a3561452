// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cachefile.h"
#include "cloudexperiment.h"
#include "cloudlimits.h"
#include "cloudprofile.h"
#include "progressstate.h"
#include "requestparam.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

enum class HttpMethod { Post = 0, Get = 1, Put = 2, Patch = 3, Delete = 4 };

// A reply, of a JSON call or the participants file, is held to a size and
// to a time in all; a result archive may be large and take long, as long
// as it keeps coming.
enum class TransferKind { Reply, Archive };

// The client of the Kelmarun Cloud REST service, held by value in the main
// window: one synchronous libcurl transfer per call and the service's calls
// built on it, each within the limits. Where the downloads go is the
// cache's affair (CloudCache).
class CloudClient
{
public:
    // Tests point a client at a service of their own and may shorten its
    // limits; the program uses the compiled-in address and the limits as
    // they stand.
    explicit CloudClient(const QByteArray &baseUrl = ZEPHLANE_CLOUD_BASE_URL, const CloudLimits &limits = CloudLimits());
    ~CloudClient();
    CloudClient(const CloudClient &) = delete;
    CloudClient &operator=(const CloudClient &) = delete;

    const CloudLimits &Limits() const { return limits; }

    // Transport. A download stopped by a limit fails, leaves no file and
    // says which limit stopped it.
    QJsonObject RestCall(const char *path, const QVector<RequestParam> &params, HttpMethod method,
                         ProgressState *progress);
    WriteStop DownloadFile(const char *path, int id, const char *filename, TransferKind kind);
    bool LastCallFailed() const { return lastCallFailed; }

    // The service's calls.
    bool Login(const char *email, const char *password);
    bool GetProfile(CloudProfile &profile);
    bool GetExperiments();
    QVector<CloudExperiment> *Experiments() { return &experiments; }
    // The two files of an experiment, into the given local paths.
    WriteStop DownloadRtInfo(int code, const QString &filename);
    WriteStop DownloadResult(int code, const QString &filename);

private:
    // Takes the outcome of a transfer, a libcurl result code.
    void Finish(int result);

    const QByteArray baseUrl;
    const CloudLimits limits;
    bool lastCallFailed = false;
    // libcurl's text for the last failure, kept though nothing reads it.
    QByteArray lastError;
    // A whole header line with the token of the last good sign-in, or empty.
    QByteArray authHeader;
    QVector<CloudExperiment> experiments;
};
