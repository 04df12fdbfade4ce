// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/settingsyntax.h"

#include "host/config/knownkeys.h"
#include "input/readfile.h"
#include "input/tomlguard.h"
#include "till/doctor/shell.h"
#include "till/text.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Kind = poshost::ConfigKey::Kind;

/// The line where the parser stopped, and what stands on it.
struct BrokenLine
{
    BrokenLine(const QByteArray& bytes, const toml::parse_error& error)
        : content(bytes), lines(QString::fromUtf8(bytes).split(u'\n')),
          number(int(error.source().begin.line)), column(int(error.source().begin.column)),
          reason(
              QString::fromUtf8(error.description().data(), qsizetype(error.description().size())))
    {
        // a text without its second quote is missed behind the end of its line
        if (text().trimmed().isEmpty() && number > 1) {
            --number;
            column = int(text().size()) + 1;
        }
        static const QRegularExpression setting(u"^\\s*([A-Za-z0-9_-]+)\\s*=?(.*)$"_s);
        key = setting.match(text()).captured(1);
        isHead = text().trimmed().startsWith(u'[');
        const auto known = poshost::knownkeys::find(table(), key);
        isKnown = known.has_value();
        mayBeShown = isHead || (known && known->kind != Kind::Secret &&
                                known->kind != Kind::Proxy && known->kind != Kind::Address);
    }

    QString text() const { return lines.value(number - 1); }

    /// The nearest head above.
    QString table() const
    {
        static const QRegularExpression head(u"^\\s*\\[\\s*([A-Za-z0-9_-]+)"_s);
        for (int above = number; above > 0; --above) {
            const auto match = head.match(lines.value(above - 1));
            if (match.hasMatch()) {
                return match.captured(1);
            }
        }
        return {};
    }

    QString shown() const
    {
        if (mayBeShown) {
            return text().trimmed();
        }
        // what nobody knows as a key may be a part of a value
        return isKnown ? key + u" = ***"_s : u"***"_s;
    }

    /// The parser quotes what it saw.
    QString shownReason() const
    {
        static const QRegularExpression quoted(u",? ?(saw|but (got|found)) .*$|'[^']*'"_s,
                                               QRegularExpression::DotMatchesEverythingOption);
        QString told = reason;
        return mayBeShown ? told : told.remove(quoted).trimmed();
    }

    const QByteArray content;
    const QStringList lines;
    int number;
    int column;
    const QString reason;
    QString key;
    bool isHead = false;
    bool isKnown = false;
    bool mayBeShown = false;
};

/// A way of writing a line, and the script of sed that makes it so without showing the value.
struct Attempt
{
    QString line;
    QString script;
};

QList<Attempt> attemptsAt(const QString& text)
{
    static const QRegularExpression bare(
        u"^(\\s*[A-Za-z0-9_-]+\\s*=)\\s*([^\\s\"'#\\\\\\[{][^\"'#\\\\]*)$"_s);
    static const QRegularExpression open(u"^\\s*[A-Za-z0-9_-]+\\s*=\\s*\"[^\"\\\\]*$"_s);
    static const QRegularExpression unsigned_(
        u"^(\\s*[A-Za-z0-9_-]+)\\s+((\"[^\"\\\\]*\")|[0-9]+)\\s*$"_s);
    static const QRegularExpression head(u"^\\s*\\[\\s*[A-Za-z0-9_-]+\\s*$"_s);
    QList<Attempt> attempts;
    if (const auto match = bare.match(text); match.hasMatch()) {
        attempts.append({match.captured(1) + u" \""_s + match.captured(2).trimmed() + u'"',
                         u"s/=[[:space:]]*\\(.*[^[:space:]]\\)[[:space:]]*$/= \"\\1\"/"_s});
    }
    if (open.match(text).hasMatch()) {
        attempts.append({text + u'"', u"s/$/\"/"_s});
    }
    if (const auto match = unsigned_.match(text); match.hasMatch()) {
        attempts.append({match.captured(1) + u" = "_s + match.captured(2),
                         u"s/\\([^[:space:]]\\)[[:space:]]/\\1 = /"_s});
    }
    if (head.match(text).hasMatch()) {
        attempts.append({text.trimmed() + u']', u"s/$/]/"_s});
    }
    return attempts;
}

bool isToml(const QByteArray& content)
{
    try {
        static_cast<void>(input::parseToml(content));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

Mend mendOf(const BrokenLine& broken, const QString& file)
{
    for (const Attempt& attempt : attemptsAt(broken.text())) {
        const Mend line = Mend::line(attempt.line, file, Mend::Place::Instead, broken.number);
        if (isToml(line.appliedTo(broken.content))) {
            return broken.mayBeShown
                       ? line
                       : Mend::command(
                             shell::sed({QString::number(broken.number) + attempt.script}, file),
                             file);
        }
    }
    return Mend::words(
        Text::tr("put line %1 of %2 right, or take it out: texts stand in quotes, a key is there "
                 "once")
            .arg(broken.number)
            .arg(file));
}

} // namespace

std::optional<Finding> lookAtSyntax(const QString& file)
{
    QByteArray content;
    try {
        content = input::readFile(file, input::maximumTomlBytes);
        static_cast<void>(input::parseToml(content));
    } catch (const toml::parse_error& error) {
        const BrokenLine broken(content, error);
        return Finding::fails(Text::tr("%1, line %2, column %3: %4; the line: %5")
                                  .arg(file)
                                  .arg(broken.number)
                                  .arg(broken.column)
                                  .arg(broken.shownReason(), broken.shown()),
                              mendOf(broken, file));
    } catch (const std::exception&) {
        return std::nullopt; // said elsewhere
    }
    return std::nullopt;
}

} // namespace till::doctor
