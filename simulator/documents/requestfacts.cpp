// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/requestfacts.h"

#include "simulator/documents/names.h"
#include "simulator/documents/rejection.h"
#include "simulator/documents/xmlreader.h"

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
