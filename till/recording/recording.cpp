// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recording.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace till {

Recording::Recording(RecordTarget& target, const QString& plugin, const QString& session)
    : recorder(target, {{u"program"_s, QStringLiteral(ORVA_VERSION)},
                        {u"plugin"_s, QFileInfo(plugin).fileName()},
                        {u"pluginBuild"_s, buildOf(plugin)},
                        {u"session"_s, session}}),
      config(recorder), transport(recorder), clock(recorder), broker(recorder)
{}

Recording::~Recording() = default;

QString Recording::buildOf(const QString& plugin)
{
    constexpr qsizetype enough = 16;
    QFile file(plugin);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file)
               ? QString::fromLatin1(hash.result().toHex().first(enough))
               : QString();
}

BasicLoyaltySystem& Recording::before(BasicLoyaltySystem& system)
{
    loyalty = std::make_unique<RecordingLoyalty>(system, recorder);
    return *loyalty;
}

} // namespace till
