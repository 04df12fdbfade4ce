// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/hostundertest.h"

/// How this till's objects are made, for the contract suite: configuration and queue are its own,
/// everything else is libposhost's.
class ExampleHost : public contract::HostUnderTest
{
public:
    QSharedPointer<AbstractDocument> makeDocument(const contract::DocumentData& data) override;
    QSharedPointer<AbstractDocument>
    suspendAndRestore(const QSharedPointer<AbstractDocument>& document) override;
    std::unique_ptr<Config> makeConfig(const QMap<QString, QVariant>& values) override;
    std::unique_ptr<contract::QueueUnderTest> makeQueue() override;
};
