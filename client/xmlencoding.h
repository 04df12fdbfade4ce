// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringConverter>

namespace orva {

/// In which encoding Qt's parser reads the bytes of an XML text: the one that its first bytes tell
/// until the declaration is read, from there on the declared one.
class XmlEncoding
{
public:
    /// Reads no further than the declaration.
    /// @param xmlText lives as long as this object
    explicit XmlEncoding(const QByteArray& xmlText);

    /// Whether the declaration has more attributes than xmllimit::declarationAttributes: the parser
    /// keeps each of them and decodes the whole text for every encoding among them.
    bool isOverloaded() const { return overloaded; }
    /// Whether every byte below 128 is the ASCII character wherever it stands and all other
    /// characters are made of other bytes, so that markup can be told without decoding.
    bool keepsAscii() const;
    /// The text as the parser sees it, without a byte order mark; empty where the parser reads
    /// nothing behind the declaration, since it refuses that or does not know the encoding. A byte
    /// that the encoding does not have stands as a character that is no markup.
    QString decoded() const;

private:
    void readDeclaration(const QString& start);
    QString toldText() const;

    const QByteArray& text;
    QStringConverter::Encoding told = QStringConverter::Utf8;
    bool marked = false;
    bool overloaded = false;
    bool refused = false;
    QString declared;             ///< empty where none is
    qsizetype declarationEnd = 0; ///< in characters
};

} // namespace orva
