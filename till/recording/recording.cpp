// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recording.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace till {

Recording::Recording(RecordTarget& target, const QString& plugin, const QString& session)
    : recorder(target, {{u"program"_s, QStringLiteral(ORVA_VERSION)},
                        {u"plugin"_s, QFileInfo(plugin).fileName()},
                        {u"session"_s, session}}),
      config(recorder), transport(recorder), clock(recorder), broker(recorder)
{}

Recording::~Recording() = default;

BasicLoyaltySystem& Recording::before(BasicLoyaltySystem& system)
{
    loyalty = std::make_unique<RecordingLoyalty>(system, recorder);
    return *loyalty;
}

} // namespace till
