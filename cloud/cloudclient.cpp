// SPDX-License-Identifier: GPL-3.0-or-later
// CloudClient's transport: one libcurl easy handle per call, the request
// written as the service expects it, the reply held in memory or streamed
// into a file.

#include "cloudclient.h"

#include <QJsonDocument>

#include <curl/curl.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

const char *const kApplicationKey = "q7Rk2VnX9bLm4TzWc8YdF3hJs6PaGe1UoNi5Kx0MvBtQrZyHwEjDlSfAgCu7Ip2n";

// A service that cannot be reached ends the call as any other transfer
// failure does instead of holding the window for ever.
const long kConnectTimeoutSeconds = 30;

// The reply of a REST call, up to its largest size. The byte after the last
// one held is always NUL, so that an empty reply reads as an empty string.
struct ResponseBuffer
{
    explicit ResponseBuffer(qint64 limit) : data(static_cast<char *>(std::calloc(1, 1))), limit(quint64(limit)) {}
    ~ResponseBuffer() { std::free(data); }
    ResponseBuffer(const ResponseBuffer &) = delete;
    ResponseBuffer &operator=(const ResponseBuffer &) = delete;

    char *data;
    quint64 size = 0;
    const quint64 limit;
};

// A reply that would grow past its limit fails the transfer.
size_t WriteToMemory(void *contents, size_t size, size_t count, void *userData)
{
    const size_t length = size * count;
    auto *buffer = static_cast<ResponseBuffer *>(userData);
    if (length > buffer->limit - buffer->size)
        return 0;
    auto *grown = static_cast<char *>(std::realloc(buffer->data, buffer->size + length + 1));
    if (grown == nullptr) {
        std::printf("not enough memory (realloc returned NULL)\n");
        return 0;
    }
    buffer->data = grown;
    std::memcpy(buffer->data + buffer->size, contents, length);
    buffer->size += length;
    buffer->data[buffer->size] = '\0';
    return length;
}

int UpdateProgress(void *userData, curl_off_t dltotal, curl_off_t dlnow, curl_off_t ultotal, curl_off_t ulnow)
{
    auto *state = static_cast<ProgressState *>(userData);
    if (dltotal > 0)
        state->percent = int(float(dlnow) / float(dltotal) * 100.0f);
    else if (ultotal > 0)
        state->percent = int(float(ulnow) / float(ultotal) * 100.0f);
    return state->cancel ? 1 : 0;
}

// A downloaded file and why its writing stopped, if it did.
struct DownloadTarget
{
    CacheFile file;
    WriteStop stop = WriteStop::None;
};

// A file that could not be opened takes nothing, which fails the transfer,
// and so does a stop.
size_t WriteToFile(char *contents, size_t size, size_t count, void *userData)
{
    const size_t length = size * count;
    auto *target = static_cast<DownloadTarget *>(userData);
    if (!target->file.IsOpen())
        return 0;
    target->stop = target->file.Write(contents, qint64(length));
    return target->stop == WriteStop::None ? length : 0;
}

// The fields are joined as they are, without escaping: a quotation mark in
// a value gives a malformed body, and the service answers that as it will.
QByteArray RequestBody(const QVector<RequestParam> &params)
{
    QByteArray body = "{";
    for (int i = 0; i < params.size(); ++i) {
        if (i > 0)
            body += ", ";
        body += '"' + params[i].key + "\": \"" + params[i].value + '"';
    }
    return body + '}';
}

void SetMethod(CURL *handle, HttpMethod method)
{
    switch (method) {
    case HttpMethod::Post:
        curl_easy_setopt(handle, CURLOPT_POST, 1L);
        break;
    case HttpMethod::Get:
        curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
        break;
    case HttpMethod::Put:
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, "PUT");
        break;
    case HttpMethod::Patch:
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, "PATCH");
        break;
    case HttpMethod::Delete:
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, "DELETE");
        break;
    }
}

// The CSRF line goes out with an empty value on both lists; the download
// list has no content type.
curl_slist *HeaderList(const QByteArray &authHeader, bool withContentType)
{
    curl_slist *headers = curl_slist_append(nullptr, "accept: application/json");
    headers = curl_slist_append(headers, (QByteArray("X-Authorization: ") + kApplicationKey).constData());
    if (!authHeader.isEmpty())
        headers = curl_slist_append(headers, authHeader.constData());
    if (withContentType)
        headers = curl_slist_append(headers, "Content-Type: application/json");
    return curl_slist_append(headers, "X-CSRF-TOKEN: ");
}

qint64 ByteLimit(const CloudLimits &limits, TransferKind kind)
{
    return kind == TransferKind::Reply ? limits.replyBytes : limits.downloadBytes;
}

// A size announced beyond the limit fails the transfer before any of it
// is taken; one not announced is held to it by the write functions as it
// comes. A reply ends within its time in all, however it trickles; an
// archive may take long as long as it keeps coming at a useful speed.
CURLcode Perform(CURL *handle, const CloudLimits &limits, TransferKind kind)
{
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, kConnectTimeoutSeconds);
    curl_easy_setopt(handle, CURLOPT_MAXFILESIZE_LARGE, curl_off_t(ByteLimit(limits, kind)));
    if (kind == TransferKind::Reply) {
        curl_easy_setopt(handle, CURLOPT_TIMEOUT, limits.callSeconds);
    } else {
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, limits.slowBytesPerSecond);
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, limits.slowSeconds);
    }
    return curl_easy_perform(handle);
}

} // namespace

// The seed is drawn on by nothing in the program; seeding is part of making
// a client all the same.
CloudClient::CloudClient(const QByteArray &baseUrl, const CloudLimits &limits)
    : baseUrl(baseUrl)
    , limits(limits)
{
    const auto ticks = std::chrono::system_clock::now().time_since_epoch() / std::chrono::nanoseconds(100);
    std::srand(unsigned(ticks / 10000000));
    curl_global_init(CURL_GLOBAL_ALL);
}

CloudClient::~CloudClient()
{
    curl_global_cleanup();
}

// The HTTP status is not read: an error page is a reply like any other, and
// what is not a JSON object comes back as an empty object, as does a reply
// stopped by its limits.
QJsonObject CloudClient::RestCall(const char *path, const QVector<RequestParam> &params, HttpMethod method,
                                  ProgressState *progress)
{
    lastCallFailed = false;
    lastError.clear();
    ResponseBuffer buffer(limits.replyBytes);
    const QByteArray url = baseUrl + path;
    CURL *handle = curl_easy_init();
    if (handle != nullptr) {
        const QByteArray body = RequestBody(params);
        SetMethod(handle, method);
        curl_slist *headers = HeaderList(authHeader, true);
        curl_easy_setopt(handle, CURLOPT_URL, url.constData());
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, WriteToMemory);
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, &buffer);
        curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
        // Without fields no body is set, whatever the method; a POST then
        // sends an empty one rather than reading standard input.
        if (!params.isEmpty())
            curl_easy_setopt(handle, CURLOPT_POSTFIELDS, body.constData());
        else if (method == HttpMethod::Post)
            curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE, 0L);
        if (progress != nullptr) {
            curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
            curl_easy_setopt(handle, CURLOPT_XFERINFODATA, progress);
            curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, UpdateProgress);
        }
        Finish(Perform(handle, limits, TransferKind::Reply));
        curl_slist_free_all(headers);
        curl_easy_cleanup(handle);
    }
    return QJsonDocument::fromJson(QByteArray(buffer.data)).object();
}

// The file is emptied before anything arrives, so after a failure it is
// empty or holds what came before the failure; an error page becomes its
// content. A file whose writing stopped is deleted.
WriteStop CloudClient::DownloadFile(const char *path, int id, const char *filename, TransferKind kind)
{
    lastCallFailed = false;
    lastError.clear();
    const QByteArray url = baseUrl + path + '/' + QByteArray::number(id);
    CURL *handle = curl_easy_init();
    if (handle == nullptr)
        return WriteStop::None;
    // Made for the transfer and freed after it; nothing is attached to it.
    curl_mime *mime = curl_mime_init(handle);
    DownloadTarget target{CacheFile(filename, ByteLimit(limits, kind), limits.freeSpaceReserve)};
    curl_slist *headers = HeaderList(authHeader, false);
    curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
    curl_easy_setopt(handle, CURLOPT_URL, url.constData());
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, WriteToFile);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &target);
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
    const CURLcode result = Perform(handle, limits, kind);
    Finish(result);
    curl_easy_cleanup(handle);
    curl_mime_free(mime);
    curl_slist_free_all(headers);
    if (result == CURLE_FILESIZE_EXCEEDED)
        target.stop = WriteStop::TooLarge;
    if (target.stop != WriteStop::None)
        target.file.Remove();
    return target.stop;
}

void CloudClient::Finish(int result)
{
    if (result != CURLE_OK) {
        lastCallFailed = true;
        lastError = curl_easy_strerror(CURLcode(result));
    }
}
