// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/reason.h"

#include "console/language.h"
#include "host/core/basicexception.h"
#include "host/services/config.h"
#include "till/text.h"

#include <QFileDevice>

#include <new>

using namespace Qt::StringLiterals;

namespace till {

QString said(const poshost::Message& message)
{
    return message.in(console::spokenLanguage() == "ru"_L1 ? poshost::Language::Russian
                                                           : poshost::Language::English);
}

QString said(const tr::Tr& text)
{
    return said(text.message());
}

QStringList noticesOf(const Config& config)
{
    QStringList texts;
    for (const poshost::Message& notice : config.notices()) {
        texts.append(said(notice));
    }
    return texts;
}

QString reasonOf(const std::exception& error)
{
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return Text::tr("there is not enough memory");
    }
    const auto* known = dynamic_cast<const BasicException*>(&error);
    return known != nullptr ? said(known->tr()) : QString::fromUtf8(error.what());
}

QString reasonOf(const QFileDevice& file)
{
    return file.error() == QFileDevice::NoError ? Text::tr("the disk is full") : file.errorString();
}

} // namespace till
