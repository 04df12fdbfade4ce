// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/requestfacts.h"

#include "simulator/names.h"
#include "simulator/rejection.h"
#include "simulator/xmlreader.h"

namespace simulator {

QString endpointOf(const Request& request)
{
    return QString::fromUtf8(request.path.mid(request.path.lastIndexOf('/') + 1));
}

QString cardOf(const Request& request)
{
    try {
        const Element check = readXml(request.body);
        const Element* card = check.child(names::cardNumber);
        return card == nullptr ? QString() : card->text;
    } catch (const Rejection&) {
        return {};
    }
}

} // namespace simulator
