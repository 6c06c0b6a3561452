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

// A service that cannot be reached, or that stops sending, ends the call as
// any other transfer failure does instead of holding the window for ever.
const long kConnectTimeoutSeconds = 30;
const long kStalledSeconds = 60;

// The reply of a REST call. The byte after the last one held is always NUL,
// so that an empty reply reads as an empty string.
struct ResponseBuffer
{
    ResponseBuffer() : data(static_cast<char *>(std::calloc(1, 1))) {}
    ~ResponseBuffer() { std::free(data); }
    ResponseBuffer(const ResponseBuffer &) = delete;
    ResponseBuffer &operator=(const ResponseBuffer &) = delete;

    char *data;
    quint64 size = 0;
};

size_t WriteToMemory(void *contents, size_t size, size_t count, void *userData)
{
    const size_t length = size * count;
    auto *buffer = static_cast<ResponseBuffer *>(userData);
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

// A file that could not be opened takes nothing, which fails the transfer.
size_t WriteToFile(char *contents, size_t size, size_t count, void *userData)
{
    auto *file = static_cast<FILE *>(userData);
    return file ? std::fwrite(contents, size, count, file) : 0;
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

CURLcode Perform(CURL *handle)
{
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, kConnectTimeoutSeconds);
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, kStalledSeconds);
    return curl_easy_perform(handle);
}

} // namespace

// The seed is drawn on by nothing in the program; seeding is part of making
// a client all the same.
CloudClient::CloudClient(const QByteArray &baseUrl)
    : baseUrl(baseUrl)
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
// what is not a JSON object comes back as an empty object.
QJsonObject CloudClient::RestCall(const char *path, const QVector<RequestParam> &params, HttpMethod method,
                                  ProgressState *progress)
{
    lastCallFailed = false;
    lastError.clear();
    ResponseBuffer buffer;
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
        Finish(Perform(handle));
        curl_slist_free_all(headers);
        curl_easy_cleanup(handle);
    }
    return QJsonDocument::fromJson(QByteArray(buffer.data)).object();
}

// The file is emptied before anything arrives, so after a failure it is
// empty or holds what came before the failure; an error page becomes its
// content.
void CloudClient::DownloadFile(const char *path, int id, const char *filename)
{
    lastCallFailed = false;
    lastError.clear();
    const QByteArray url = baseUrl + path + '/' + QByteArray::number(id);
    CURL *handle = curl_easy_init();
    if (handle == nullptr)
        return;
    // Made for the transfer and freed after it; nothing is attached to it.
    curl_mime *mime = curl_mime_init(handle);
    FILE *file = std::fopen(filename, "wb");
    curl_slist *headers = HeaderList(authHeader, false);
    curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
    curl_easy_setopt(handle, CURLOPT_URL, url.constData());
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, WriteToFile);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, file);
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
    Finish(Perform(handle));
    curl_easy_cleanup(handle);
    curl_mime_free(mime);
    if (file != nullptr)
        std::fclose(file);
    curl_slist_free_all(headers);
}

void CloudClient::Finish(int result)
{
    if (result != CURLE_OK) {
        lastCallFailed = true;
        lastError = curl_easy_strerror(CURLcode(result));
    }
}
