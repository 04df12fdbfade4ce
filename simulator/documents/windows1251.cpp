// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/windows1251.h"

#include <QString>

namespace simulator {
namespace {

char inWindows1251(QChar character)
{
    constexpr char16_t firstLetter = u'А';
    constexpr char16_t lastLetter = u'я';
    constexpr int firstCode = 0xC0;
    const char16_t code = character.unicode();
    if (code < 0x80) {
        return static_cast<char>(code);
    }
    if (code >= firstLetter && code <= lastLetter) {
        return static_cast<char>(firstCode + code - firstLetter);
    }
    return code == u'Ё' ? '\xA8' : code == u'ё' ? '\xB8' : '?';
}

} // namespace

QByteArray inWindows1251(const QByteArray& utf8)
{
    const QString text = QString::fromUtf8(utf8);
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar character : text) {
        bytes.append(inWindows1251(character));
    }
    return bytes;
}

} // namespace simulator
