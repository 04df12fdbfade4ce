// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/reason.h"

#include "host/core/basicexception.h"
#include "till/text.h"

#include <QFileDevice>

#include <new>

namespace till {

QString reasonOf(const std::exception& error)
{
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return Text::tr("there is not enough memory");
    }
    const auto* known = dynamic_cast<const BasicException*>(&error);
    return known != nullptr ? known->tr().ru() : QString::fromUtf8(error.what());
}

QString reasonOf(const QFileDevice& file)
{
    return file.error() == QFileDevice::NoError ? Text::tr("the disk is full") : file.errorString();
}

} // namespace till
