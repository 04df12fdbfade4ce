// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What is taken from the environment of the process.

#include "tests/unit/till/doctor/row.h"

#include <QDir>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;
using tests::Row;
using tests::Scene;

namespace {

QList<Row> locales()
{
    QList<Row> rows;
    for (const QByteArray locale : {"C", "xx_XX.UTF-8"}) {
        rows.append({locale == "C" ? "another encoding" : "a locale that is not installed",
                     [locale](Scene&) { qputenv("LC_ALL", locale); }, u"encoding fails"_s});
    }
    return rows;
}

QList<Row> errorsThatAreNotLogged()
{
    const auto switchOff = [] { QLoggingCategory::setFilterRules(u"orva.critical=false"_s); };
    return {{"rules of the environment",
             [=](Scene&) {
                 qputenv("QT_LOGGING_RULES", "orva.critical=false");
                 switchOff();
             },
             u"logging warning"_s},
            {"rules from elsewhere", [=](Scene&) { switchOff(); }, u"logging warning"_s}};
}

QList<Row> foldersForRecords()
{
    const auto naming = [](const QString& folder) {
        return [folder](Scene& scene) {
            scene.set(u"recording.folder"_s, Scene::quoted(folder));
            scene.folder.write(u"a file"_s, {});
        };
    };
    return {
        {"a file in its place", naming(u"a file"_s), u"recording fails"_s},
        {"a file in the place of the one above", naming(u"a file/records"_s), u"recording fails"_s},
        {"a folder that its owner may not change",
         [](Scene& scene) {
             scene.isOrdinaryUser = true;
             scene.set(u"recording.folder"_s, u"\"my records\""_s);
             QDir().mkpath(scene.folder.file(u"my records"_s));
             QFile::setPermissions(scene.folder.file(u"my records"_s),
                                   QFile::ReadOwner | QFile::ExeOwner);
         },
         u"recording fails"_s},
        {"nothing but such a folder above",
         [](Scene& scene) {
             scene.isOrdinaryUser = true;
             scene.set(u"recording.folder"_s, u"\"closed/records\""_s);
             QDir().mkpath(scene.folder.file(u"closed"_s));
             QFile::setPermissions(scene.folder.file(u"closed"_s),
                                   QFile::ReadOwner | QFile::ExeOwner);
         },
         u"recording fails"_s}};
}

QList<Row> noService()
{
    return {{"no service", [](Scene& scene) { scene.setService(false); }, u"service warning"_s}};
}

} // namespace

QList<tests::Ways> tests::environmentWays()
{
    return {{"anEnvironmentWithoutUtf8", locales},
            {"errorsThatAreNotLogged", errorsThatAreNotLogged},
            {"foldersThatTakeNoRecords", foldersForRecords},
            {"nobodyWhoDelivers", noService}};
}
