// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/config.h"

#include <QJsonValue>

namespace till {

class Recorder;

/// Stands before the configuration while it lives and writes down which values the plug-in asks
/// for, secrets left out.
class RecordingConfig : public Config
{
public:
    explicit RecordingConfig(Recorder& journal);
    ~RecordingConfig() override;

    QString getString(const QString& key, const QString& defaultValue) const override;
    int getInt(const QString& key, int defaultValue) const override;

private:
    Recorder& recorder;
    Config* const before;
};

} // namespace till
