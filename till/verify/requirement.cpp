// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/requirement.h"

#include "input/tomlguard.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

QList<Requirement> readAll()
{
    QFile file(u":/verify/requirements.toml"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("no requirements");
    }
    const toml::table table = input::parseToml(file.readAll());
    QList<Requirement> all;
    for (const toml::node& node : *table["requirement"].as_array()) {
        const toml::table& row = *node.as_table();
        const auto text = [&row](const char* key) {
            return QString::fromStdString(row[key].value_or(std::string()));
        };
        all.append({text("name"), text("level") == "must"_L1, text("sentence")});
    }
    return all;
}

} // namespace

QList<Requirement> Requirement::all()
{
    static const QList<Requirement> read = readAll();
    return read;
}

Requirement Requirement::named(const QString& name)
{
    for (const Requirement& requirement : all()) {
        if (requirement.name == name) {
            return requirement;
        }
    }
    return {name, true, {}};
}

} // namespace till::verify
