// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/settingsfile.h"

#include "host/config/configkey.h"
#include "input/readfile.h"
#include "input/tomlguard.h"
#include "till/doctor/shell.h"
#include "till/text.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <sstream>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

struct Lines
{
    int first = 0;
    int last = 0;
};

const toml::node* nodeOf(const toml::table& root, const QString& table, const QString& key)
{
    if (table.isEmpty()) {
        return root.get(key.toStdString());
    }
    const toml::node* const found = root.get(table.toStdString());
    return key.isEmpty() || found == nullptr || !found->is_table()
               ? (key.isEmpty() ? found : nullptr)
               : found->as_table()->get(key.toStdString());
}

/// A head of that table alone on its line.
QRegularExpression headOf(const QString& table)
{
    return QRegularExpression(
        u"^\\s*\\[\\s*%1\\s*\\]\\s*(#.*)?$"_s.arg(QRegularExpression::escape(table)));
}

/// The key at the beginning of its line, up to the sign.
QRegularExpression signOf(const QString& key)
{
    return QRegularExpression(u"^\\s*%1\\s*="_s.arg(QRegularExpression::escape(key)));
}

} // namespace

struct SettingsFile::Content
{
    QByteArray bytes;
    QStringList lines;
    toml::table root;
};

SettingsFile::SettingsFile(const QString& fileName) : file(QFileInfo(fileName).absoluteFilePath())
{
    auto read = std::make_unique<Content>();
    try {
        read->bytes = input::readFile(file, input::maximumTomlBytes);
        read->lines = QString::fromUtf8(read->bytes).split(u'\n');
        read->root = input::parseToml(read->bytes);
        content = std::move(read);
    } catch (const std::exception&) {
        content.reset(); // why is said where the file itself is looked at
    }
}

SettingsFile::~SettingsFile() = default;

bool SettingsFile::wouldParse(const QByteArray& changed) const
{
    try {
        return !input::parseToml(changed).empty();
    } catch (const std::exception&) {
        return false;
    }
}

QString SettingsFile::lineAt(int number) const
{
    return content->lines.value(number - 1);
}

int SettingsFile::lineOf(const QString& table, const QString& key) const
{
    const toml::node* const node = content ? nodeOf(content->root, table, key) : nullptr;
    if (node == nullptr) {
        return 0;
    }
    const auto place = node->source();
    const int line = int(place.begin.line);
    const bool isOwn = key.isEmpty() ? headOf(table).match(lineAt(line)).hasMatch()
                                     : signOf(key).match(lineAt(line)).hasMatch();
    return isOwn ? line : 0;
}

Mend SettingsFile::set(const poshost::ConfigKey& key, const QString& value) const
{
    const QString setting = u"%1 = %2"_s.arg(key.key, value);
    const Mend words =
        Mend::words(Text::tr("write %1 under [%2] in %3").arg(setting, key.table, file));
    if (!content) {
        return words;
    }
    Mend mend;
    const toml::node* const there = nodeOf(content->root, key.table, key.key);
    const int line = lineOf(key.table, key.key);
    const int head = lineOf(key.table, QString());
    if (there != nullptr) {
        if (line == 0 || there->source().end.line != there->source().begin.line) {
            return words;
        }
        mend = Mend::line(setting, file, Mend::Place::Instead, line);
    } else if (head != 0) {
        mend = Mend::line(setting, file, Mend::Place::Behind, head);
    } else {
        mend = Mend::line(u"[%1]\n%2"_s.arg(key.table, setting), file, Mend::Place::AtEnd);
    }
    return wouldParse(mend.appliedTo(content->bytes)) ? mend : words;
}

QString SettingsFile::bareValue(const poshost::ConfigKey& key) const
{
    const int line = lineOf(key.table, key.key);
    static const QRegularExpression bare(u"=\\s*([A-Za-z0-9_.+:-]+)\\s*(#.*)?$"_s);
    return line == 0 ? QString() : bare.match(lineAt(line)).captured(1);
}

QString SettingsFile::textValue(const poshost::ConfigKey& key) const
{
    const toml::node* const node = content ? nodeOf(content->root, key.table, key.key) : nullptr;
    return node == nullptr ? QString()
                           : QString::fromStdString(node->value_exact<std::string>().value_or(""));
}

Mend SettingsFile::quote(const poshost::ConfigKey& key) const
{
    if (bareValue(key).isEmpty()) {
        return Mend::words(Text::tr("write the value of %1 under [%2] in %3 in quotes")
                               .arg(key.key, key.table, file));
    }
    const QString script =
        u"%1s/=[[:space:]]*\\([^[:space:]#]*\\)/= \"\\1\"/"_s.arg(lineOf(key.table, key.key));
    return Mend::command(shell::sed({script}, file), file);
}

std::optional<QStringList> SettingsFile::leavingOut(const QString& table, const QString& key) const
{
    Lines out{lineOf(table, key), 0};
    if (out.first == 0) {
        return std::nullopt;
    }
    static const QRegularExpression head(u"^\\s*\\["_s);
    out.last = int(nodeOf(content->root, table, key)->source().end.line);
    while (key.isEmpty() && out.last < content->lines.size() &&
           !head.match(lineAt(out.last + 1)).hasMatch()) {
        ++out.last;
    }
    QStringList changed = content->lines;
    for (int number = out.first; number <= out.last; ++number) {
        changed[number - 1].prepend(u"# "_s);
    }
    if (!wouldParse(changed.join(u'\n').toUtf8())) {
        return std::nullopt;
    }
    return QStringList{out.first == out.last ? u"%1s/^/# /"_s.arg(out.first)
                                             : u"%1,%2s/^/# /"_s.arg(out.first).arg(out.last)};
}

Mend SettingsFile::leaveOut(const QString& table, const QString& key) const
{
    const auto scripts = leavingOut(table, key);
    return scripts ? Mend::command(shell::sed(*scripts, file), file)
                   : Mend::words(Text::tr("take %1 out of %2")
                                     .arg(table.isEmpty() || key.isEmpty() ? table + key
                                                                           : table + u'.' + key,
                                          file));
}

std::optional<QString> SettingsFile::renaming(const QString& table, const QString& key,
                                              const QString& name) const
{
    static const QRegularExpression bare(u"^[A-Za-z0-9_-]+$"_s);
    const int line = lineOf(table, key);
    const QString former = key.isEmpty() ? table : key;
    const bool isTaken = nodeOf(content->root, key.isEmpty() ? QString() : table, name) != nullptr;
    if (line == 0 || isTaken || !bare.match(former).hasMatch() || !bare.match(name).hasMatch()) {
        return std::nullopt;
    }
    return u"%1s/%2/%3/"_s.arg(line).arg(former, name);
}

QString SettingsFile::secretFile(const poshost::ConfigKey& key) const
{
    const toml::node* const node = content ? nodeOf(content->root, key.table, key.key) : nullptr;
    const toml::table* const table = node == nullptr ? nullptr : node->as_table();
    const auto named =
        table == nullptr ? std::nullopt : (*table)["file"].value_exact<std::string>();
    return named ? QFileInfo(file).absoluteDir().absoluteFilePath(QString::fromStdString(*named))
                 : QString();
}

QString SettingsFile::quoted(const QString& text)
{
    std::ostringstream stream;
    const toml::value<std::string> value(text.toStdString());
    // one line, whatever the text holds
    stream << toml::toml_formatter(value, toml::format_flags::allow_unicode_strings);
    return QString::fromStdString(stream.str());
}

} // namespace till::doctor
