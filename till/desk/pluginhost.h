// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/failure.h"

#include <QPluginLoader>
#include <QPointer>
#include <QString>

class BasicLoyaltySystem;
class BasicPlugin;

namespace till {

/// Why a plug-in cannot be used, and at which step that came out.
class PluginFailure : public Failure
{
public:
    enum class Step
    {
        Metadata,
        Contract,
        Loading,
        Cast,
        Initialisation,
    };

    PluginFailure(Step failedStep, const QString& sentence)
        : Failure(sentence), failedAt(failedStep)
    {}

    Step step() const { return failedAt; }

private:
    Step failedAt;
};

/// A loyalty system loaded from its library. The till knows nothing of it but the host's contracts.
///
/// When this object ends, the plug-in is taken down and deleted; the library stays in the process,
/// because objects that the plug-in has made may still be around and need its code.
class PluginHost
{
public:
    /// Checks the library's metadata and the version of the contract that it was built for, loads
    /// it, casts its object and initialises it.
    /// @throws PluginFailure that names the step and holds Qt's own error text
    explicit PluginHost(const QString& fileName);
    ~PluginHost();
    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;

    BasicLoyaltySystem& loyaltySystem() const { return *system; }

    /// Why a library cannot be used by what its file says of the contract that it was built for;
    /// empty when it can. Runs nothing of it.
    static QString contractComplaint(const QString& fileName);

    /// The identifier that a loyalty plug-in of this till must have in its metadata.
    static QString requiredIid();

private:
    void checkMetadata() const;
    QObject* load();
    void cast(QObject* object);
    void initialise();

    QString file;
    QPluginLoader loader;
    QPointer<QObject> instance;
    BasicLoyaltySystem* system = nullptr;
    BasicPlugin* plugin = nullptr;
};

} // namespace till
