// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/installedplugin.h"

#include "host/services/config.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;

namespace till {

QString installedPlugin()
{
    const QDir folder(QDir::cleanPath(QCoreApplication::applicationDirPath() + u'/' +
                                      QStringLiteral(ORVA_PLUGINS_FROM_PROGRAM)));
    const QStringList plugins = folder.entryList({u"*.so"_s}, QDir::Files);
    return plugins.size() == 1 ? folder.filePath(plugins.first()) : QString();
}

QString chosenPlugin(const QString& named, const Config& config, const QString& installed)
{
    const QString file = named.isEmpty() ? config.getString(u"till:plugin"_s, QString()) : named;
    return file.isEmpty() ? installed : file;
}

} // namespace till
