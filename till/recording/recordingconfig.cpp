// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recordingconfig.h"

#include "host/config/knownkeys.h"
#include "till/recording/recordedaddresses.h"
#include "till/recording/recorder.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Of a key that nobody has registered nobody can say whether it holds a secret.
bool mayBeShown(const QString& key)
{
    const auto known = poshost::knownkeys::find(key.section(u':', 0, 0), key.section(u':', 1));
    return known && known->kind != poshost::ConfigKey::Kind::Secret;
}

} // namespace

RecordingConfig::RecordingConfig(Recorder& journal)
    : recorder(journal), before(Singleton<Config>::instance)
{
    Singleton<Config>::instance = this;
}

RecordingConfig::~RecordingConfig()
{
    Singleton<Config>::instance = before;
}

QString RecordingConfig::getString(const QString& key, const QString& defaultValue) const
{
    const QString value = before->getString(key, defaultValue);
    if (recorder.isOwnThread() && mayBeShown(key)) {
        recorder.noteConfig(key, recordedaddresses::cleanValue(key, value));
    }
    return value;
}

int RecordingConfig::getInt(const QString& key, int defaultValue) const
{
    const int value = before->getInt(key, defaultValue);
    if (recorder.isOwnThread() && mayBeShown(key)) {
        recorder.noteConfig(key, value);
    }
    return value;
}

} // namespace till
