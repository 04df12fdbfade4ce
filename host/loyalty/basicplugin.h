// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"
#include "host/loyalty/abstractpluginid.h"
#include "host/loyalty/actionhandler.h"
#include "host/loyalty/actiontrigger.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

/// Base of every plug-in of the host.
///
/// Order of calls, all on the host thread: the library is loaded, its object is cast, init is
/// called once and returns whether the plug-in can work; then the operations of its own interface;
/// deinit once at the end; the host deletes the object. A host that ends without either does no
/// harm: the object may be left behind, or go with the library or with a static object. A
/// constructor does nothing that can fail for reasons outside the process.
class HOST_EXPORT BasicPlugin
{
public:
    BasicPlugin();
    BasicPlugin(const BasicPlugin&) = delete;
    BasicPlugin& operator=(const BasicPlugin&) = delete;
    virtual ~BasicPlugin();

    /// Makes the plug-in ready. @return false when it cannot work; the host then drops it.
    virtual bool init();
    /// Undoes init. @return true when nothing was left behind.
    virtual bool deinit();

    /// Whether a feature of the host has been switched on for this plug-in.
    virtual bool isFeatureMatched(const QString& feature) const;
    virtual void setFeature(const QString& feature);
    virtual void addHandler(const ActionHandler& handler);
    virtual void addTrigger(const ActionTrigger& trigger);
    /// Disables triggers by their identifiers until enableTriggers.
    virtual void disableTriggers(const QSet<int>& identifiers);
    virtual void enableTriggers();

private:
    QSet<QString> features;
    QList<ActionHandler> handlers;
    QList<ActionTrigger> triggers;
    QSet<int> disabledTriggers;
};

Q_DECLARE_INTERFACE(BasicPlugin, ABSTRACT_PLUGIN_IID)
