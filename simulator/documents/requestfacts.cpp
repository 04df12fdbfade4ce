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
        return readXml(request.body).root().child(names::cardNumber).text();
    } catch (const Rejection&) {
        return {};
    }
}

} // namespace simulator
