// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/deviations.h"

#include <stdexcept>
#include <toml++/toml.h>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

QString textOf(const toml::table& table, const char* key)
{
    const auto text = table[key].value<std::string>();
    if (!text || text->empty()) {
        throw std::runtime_error(std::string("deviations.toml: an entry has no ") + key);
    }
    return QString::fromStdString(*text);
}

} // namespace

bool Deviation::covers(const WireDocument& document) const
{
    return document.name == file && document.text.trimmed().startsWith(begins.toUtf8());
}

std::vector<Deviation> deviations()
{
    const toml::table list = toml::parse_file(ORVA_DEVIATIONS);
    std::vector<Deviation> result;
    for (const toml::node& node : *list["deviation"].as_array()) {
        const toml::table& entry = *node.as_table();
        result.push_back({textOf(entry, "file"), textOf(entry, "begins"), textOf(entry, "reason")});
    }
    return result;
}

} // namespace tests
