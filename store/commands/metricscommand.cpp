// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "store/commands/metricscommand.h"

#include "console/exitcode.h"
#include "store/commands/spoken.h"
#include "store/commands/storemetrics.h"
#include "store/commands/untilstopped.h"
#include "store/text.h"

#include <QRegularExpression>

#include <prometheus/exposer.h>

using namespace Qt::StringLiterals;

namespace orvastore {

namespace {

/// Who may see the figures is who is on this machine.
void requireOwnAddress(const QString& given)
{
    static const QRegularExpression own(u"^(127\\.0\\.0\\.1|\\[::1\\]):([0-9]{1,5})$"_s);
    constexpr int highestPort = 65535;
    const QRegularExpressionMatch match = own.match(given);
    if (!match.hasMatch() || match.captured(2).toInt() > highestPort) {
        throw Failure(Text::tr("%1 is not an address of this machine alone, such as "
                               "127.0.0.1:9188.")
                          .arg(given));
    }
}

std::unique_ptr<prometheus::Exposer> listeningAt(const QString& given)
{
    requireOwnAddress(given);
    try {
        return std::make_unique<prometheus::Exposer>(given.toStdString(), 1);
    } catch (const std::exception&) {
        throw Failure(Text::tr("%1 cannot be listened on: is it taken?").arg(given));
    }
}

} // namespace

int MetricsCommand::run()
{
    UntilStopped stop;
    const auto metrics = std::make_shared<StoreMetrics>(settings);
    const auto exposer = listeningAt(options.listen);
    exposer->RegisterCollectable(metrics);
    const QString host = options.listen.left(options.listen.lastIndexOf(u':'));
    out.line(Text::tr("Metrics: http://%1:%2/metrics, until stopped.")
                 .arg(host)
                 .arg(exposer->GetListeningPorts().front()));
    stop.wait();
    return console::exitcode::ok;
}

} // namespace orvastore
