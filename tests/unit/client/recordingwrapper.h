// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/xml/xmlwrapper.h"

#include <gmock/gmock.h>

namespace tests {

/// The host's XML helper, telling how it was called: it does what the host's does until a test says
/// otherwise.
class RecordingWrapper : public XmlWrapper
{
public:
    RecordingWrapper()
    {
        using ::testing::_;
        ON_CALL(*this, extractElements(_, _))
            .WillByDefault([this](const QDomElement& parent, const QList<QString>& path) {
                return XmlWrapper::extractElements(parent, path);
            });
        ON_CALL(*this, extractElement(_, _, _))
            .WillByDefault([this](const QDomElement& parent, const QList<QString>& path,
                                  const OnMissing& onMissing) {
                return XmlWrapper::extractElement(parent, path, onMissing);
            });
        ON_CALL(*this, insertElement(_, _, _, _))
            .WillByDefault([this](QDomElement& parent, const QList<QString>& path,
                                  const QDomNode& node, Operation operation) {
                XmlWrapper::insertElement(parent, path, node, operation);
            });
    }

    MOCK_METHOD(QList<QDomElement>, extractElements, (const QDomElement&, const QList<QString>&),
                (const, override));
    MOCK_METHOD(QDomElement, extractElement,
                (const QDomElement&, const QList<QString>&, const OnMissing&), (const, override));
    MOCK_METHOD(void, insertElement,
                (QDomElement&, const QList<QString>&, const QDomNode&, Operation),
                (const, override));
};

} // namespace tests
