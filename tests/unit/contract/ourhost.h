// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/hostundertest.h"
#include "host/document/document.h"

namespace tests {

/// libposhost, and the till's way of keeping documents, for the contract suite.
class OurHost : public contract::HostUnderTest
{
public:
    QSharedPointer<AbstractDocument> makeDocument(const contract::DocumentData& data) override;
    QSharedPointer<AbstractDocument>
    suspendAndRestore(const QSharedPointer<AbstractDocument>& document) override;
    std::unique_ptr<Config> makeConfig(const QMap<QString, QVariant>& values) override;
    std::unique_ptr<contract::QueueUnderTest> makeQueue() override;

protected:
    static void fill(Document& document, const contract::DocumentData& data);
};

} // namespace tests
