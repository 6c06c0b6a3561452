// SPDX-License-Identifier: GPL-3.0-or-later
// Replies of the cloud service, read by the client through the calls the
// cloud panel makes: sign-in, profile, the experiment list, and for the
// first experiments listed the participant count from rt_info and the
// result archive. The first byte of an input chooses how the service
// answers (a status, or no reply at all); the rest is the body of every
// reply. The replies cross a real HTTP connection on the loopback address.

#include "cloudcache.h"
#include "cloudclient.h"
#include "fuzzenvironment.h"
#include "loopbackserver.h"

#include <QDir>

namespace {

const int kExperimentsFollowed = 3;

void AnswerEverything(LoopbackServer &server, const QByteArray &bytes, const QList<QByteArray> &paths)
{
    static const QByteArray statuses[] = {"200 OK", "401 Unauthorized", "500 Internal Server Error", ""};
    const QByteArray status = statuses[bytes.isEmpty() ? 0 : quint8(bytes[0]) % 4];
    for (const QByteArray &path : paths)
        server.Answer("/api/user/v1/" + path, bytes.mid(1), status);
}

void FollowExperiments(CloudClient &client, LoopbackServer &server, const QByteArray &bytes)
{
    CloudCache cache(client);
    const QVector<CloudExperiment> experiments = *client.Experiments();
    for (int i = 0; i < qMin(kExperimentsFollowed, experiments.size()); ++i) {
        CloudExperiment experiment = experiments[i];
        const QByteArray code = QByteArray::number(experiment.code);
        AnswerEverything(server, bytes, {"download-rtinfo-file/" + code, "download-result/" + code});
        cache.UpdateParticipants(experiment.code, experiment);
        client.DownloadResult(experiment.code, CloudCache::ArchivePath(experiment.code));
    }
}

// A server of its own for each input, so that no reply outlives it.
void Talk(const QByteArray &bytes)
{
    LoopbackServer server;
    AnswerEverything(server, bytes, {"login", "profile", "get-all-experiments"});
    CloudClient client(server.BaseUrl());
    FuzzEnvironment::WithinTimeLimit(bytes.size(), [&] {
        client.Login("ann@example.com", "secret");
        CloudProfile profile;
        client.GetProfile(profile);
        client.GetExperiments();
        FollowExperiments(client, server, bytes);
    });
    QDir(CloudCache::AppDataDir() + QStringLiteral("/Cloud")).removeRecursively();
}

} // namespace

ZEPHLANE_FUZZ_TARGET(Talk)
