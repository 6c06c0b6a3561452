#pragma once

#include "cloudexperiment.h"
#include "cloudprofile.h"
#include "progressstate.h"
#include "requestparam.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

enum class HttpMethod { Post = 0, Get = 1, Put = 2, Patch = 3, Delete = 4 };

// The client of the Kelmarun Cloud REST service, held by value in the main
// window: one synchronous libcurl transfer per call and the service's calls
// built on it. Where the downloads go is the cache's affair (CloudCache).
class CloudClient
{
public:
    // Tests point a client at a service of their own; the program uses the
    // compiled-in address.
    explicit CloudClient(const QByteArray &baseUrl = ZEPHLANE_CLOUD_BASE_URL);
    ~CloudClient();
    CloudClient(const CloudClient &) = delete;
    CloudClient &operator=(const CloudClient &) = delete;

    // Transport.
    QJsonObject RestCall(const char *path, const QVector<RequestParam> &params, HttpMethod method,
                         ProgressState *progress);
    void DownloadFile(const char *path, int id, const char *filename);
    bool LastCallFailed() const { return lastCallFailed; }
    QByteArray LastError() const { return lastError; }

    // The service's calls.
    bool Login(const char *email, const char *password);
    bool GetProfile(CloudProfile &profile);
    bool GetExperiments();
    QVector<CloudExperiment> *Experiments() { return &experiments; }

    // The two files of an experiment, into the given local paths.
    void DownloadRtInfo(int code, const QString &filename);
    void DownloadResult(int code, const QString &filename);

private:
    // Takes the outcome of a transfer, a libcurl result code.
    void Finish(int result);

    const QByteArray baseUrl;
    bool lastCallFailed = false;
    QByteArray lastError;
    // A whole header line with the token of the last good sign-in, or empty.
    QByteArray authHeader;
    QVector<CloudExperiment> experiments;
};
