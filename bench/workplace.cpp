// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/workplace.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

Workplace::Workplace(const QString& serverUrl, const QString& authorityFile,
                     const QByteArray& furtherKeys)
    : folder(QDir::tempPath() + u"/orva-bench-XXXXXX"_s)
{
    QFile settings(file(u"orva.toml"_s));
    if (!folder.isValid() || !settings.open(QIODevice::WriteOnly)) {
        throw std::runtime_error("no temporary folder");
    }
    settings.write(u"[Orva]\nserverUrl = \"%1\"\nmerchantId = \"1042\"\npos = \"3\"\n"
                   "user = \"till\"\npassword = \"secret\"\napikey = \"key\"\n"_s.arg(serverUrl)
                       .toUtf8());
    if (!authorityFile.isEmpty()) {
        settings.write(u"[http]\ncaFile = \"%1\"\n"_s.arg(authorityFile).toUtf8());
    }
    settings.write(furtherKeys);
    settings.close();
    config.load(settings.fileName());
    Singleton<Config>::instance = &config;
    Singleton<Session>::instance = &session;
}

Workplace::~Workplace()
{
    Singleton<Session>::instance = nullptr;
    Singleton<Config>::instance = nullptr;
}

} // namespace bench
