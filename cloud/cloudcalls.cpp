// SPDX-License-Identifier: GPL-3.0-or-later
// CloudClient's calls to the service: what each call sends and reads.

#include "cloudclient.h"

#include <QJsonArray>

#include <algorithm>
#include <limits>

namespace {

// Only a JSON true opens a reply's payload; 1 or "true" read as false.
bool Succeeded(const QJsonObject &reply)
{
    return reply.value(QLatin1String("success")).toBool();
}

QJsonObject Data(const QJsonObject &reply)
{
    return reply.value(QLatin1String("data")).toObject();
}

// Only the number 1 counts: true, "1" or 1.0 in another guise read as 0.
bool IsOne(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toInt() == 1;
}

QString Text(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

// Sizes come as doubles and are truncated; a value no count can hold reads
// as 0 or as the largest count rather than as anything at all.
quint64 Count(const QJsonObject &object, const char *key)
{
    const double value = object.value(QLatin1String(key)).toDouble();
    if (!(value >= 0))
        return 0;
    if (value >= double(std::numeric_limits<quint64>::max()))
        return std::numeric_limits<quint64>::max();
    return quint64(value);
}

// The token goes into a header line of every later request, where a line
// break or another control character would add lines of the service's
// choosing, and a space would end the token.
bool FitsInHeader(const QString &token)
{
    return std::none_of(token.begin(), token.end(),
                        [](QChar c) { return c.category() == QChar::Other_Control || c.isSpace(); });
}

CloudExperiment ReadExperiment(const QJsonObject &entry)
{
    CloudExperiment experiment;
    experiment.code = entry.value(QLatin1String("code")).toInt();
    experiment.isTerminated = IsOne(entry, "is_terminated");
    experiment.name = Text(entry, "name");
    experiment.expiryDate = Text(entry, "expiry_date");
    experiment.size = entry.value(QLatin1String("size")).toInt();
    return experiment;
}

} // namespace

// The token of an earlier sign-in still goes out with this request, and a
// failed sign-in clears it. A token that could not stand in a header line
// as it is fails the sign-in.
bool CloudClient::Login(const char *email, const char *password)
{
    const QVector<RequestParam> params{{"email", email, false}, {"password", password, false}};
    const QJsonObject reply = RestCall("user/v1/login", params, HttpMethod::Post, nullptr);
    const QString token = Text(Data(reply), "access_token");
    const bool success = Succeeded(reply) && FitsInHeader(token);
    QByteArray header;
    if (success)
        header = "Authorization: Bearer " + token.toUtf8();
    authHeader = header;
    return success;
}

// A failed call leaves the profile as it was.
bool CloudClient::GetProfile(CloudProfile &profile)
{
    const QJsonObject reply = RestCall("user/v1/profile", {}, HttpMethod::Get, nullptr);
    if (!Succeeded(reply))
        return false;
    const QJsonObject data = Data(reply);
    profile.name = Text(data, "name");
    profile.email = Text(data, "email");
    profile.passwordSet = IsOne(data, "set_password");
    profile.delegatesCount = data.value(QLatin1String("delegates_count")).toInt();
    const QJsonObject subscription = data.value(QLatin1String("current_subscription")).toObject();
    profile.numberOfDelegates = subscription.value(QLatin1String("number_of_delegates")).toInt();
    profile.limitPackage = Count(subscription, "limit_package");
    profile.uploadedExperimentsSize = Count(subscription, "uploaded_experiments_size");
    profile.expiryDate = Text(subscription, "expiry_date");
    profile.isDelegate = Text(data.value(QLatin1String("role")).toObject(), "slug") == QLatin1String("delegate");
    const QJsonObject parent = data.value(QLatin1String("parent")).toObject();
    profile.parentName = Text(parent, "name");
    profile.parentEmail = Text(parent, "email");
    return true;
}

// The list is emptied first, so a failed call leaves an account without
// experiments. The reply's order is kept as it is.
bool CloudClient::GetExperiments()
{
    experiments.clear();
    const QJsonObject reply = RestCall("user/v1/get-all-experiments", {}, HttpMethod::Get, nullptr);
    if (!Succeeded(reply))
        return false;
    for (const QJsonValue entry : reply.value(QLatin1String("data")).toArray())
        experiments.append(ReadExperiment(entry.toObject()));
    return true;
}

WriteStop CloudClient::DownloadRtInfo(int code, const QString &filename)
{
    return DownloadFile("user/v1/download-rtinfo-file", code, filename.toStdString().c_str(), TransferKind::Reply);
}

WriteStop CloudClient::DownloadResult(int code, const QString &filename)
{
    return DownloadFile("user/v1/download-result", code, filename.toStdString().c_str(), TransferKind::Archive);
}
