// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/examination.h"

#include "till/configfile.h"
#include "till/options.h"

#include <QFileInfo>

#include <cstring>

using namespace Qt::StringLiterals;

namespace till::examination {
namespace {

QtMessageHandler formerHandler = nullptr;

void withoutTheirErrors(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isTheirs =
        context.category != nullptr && (std::strcmp(context.category, "orva") == 0 ||
                                        std::strncmp(context.category, "poshost.", 8) == 0);
    if (!isTheirs) {
        formerHandler(type, context, text);
    }
}

/// The system's own service delivers the queue of the machine's settings.
QString serviceStart(const QString& configFile)
{
    const bool isMachines = QFileInfo(configFile).absoluteFilePath() == configfile::ofMachine();
    return isMachines && QFileInfo(u"/run/systemd/system"_s).isDir()
               ? u"systemctl start orva-delivery"_s
               : QString();
}

} // namespace

doctor::Subject subjectOf(const Options& options)
{
    doctor::Subject subject;
    subject.configFile = options.configFile;
    subject.plugin = options.plugin;
    subject.database = options.database;
    subject.card = options.card;
    subject.serviceStart = serviceStart(options.configFile);
    return subject;
}

WithoutLog::WithoutLog(bool isVerbose) : isOn(!isVerbose)
{
    if (isOn) {
        formerHandler = qInstallMessageHandler(withoutTheirErrors);
    }
}

WithoutLog::~WithoutLog()
{
    if (isOn) {
        qInstallMessageHandler(formerHandler);
    }
}

} // namespace till::examination
