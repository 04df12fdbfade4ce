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

    /// Makes the plug-in ready. Called once, after the host's services were put in place. By
    /// default there is nothing to do.
    /// @return false when it cannot work; the host then drops it
    virtual bool init();
    /// Undoes init. Called once before the object is deleted, while the services are still there.
    /// By default there is nothing to do.
    /// @return true when nothing was left behind
    virtual bool deinit();

    /// Whether a feature of the host has been switched on for this plug-in with setFeature.
    /// @param feature its name, as the host spells it
    /// @return false as well for one that nobody knows
    virtual bool isFeatureMatched(const QString& feature) const;
    /// Switches a feature on, for the life of the object. Called before init by a host that has
    /// such features; orva-till has none.
    /// @param feature its name, as the host spells it
    virtual void setFeature(const QString& feature);
    /// Offers to take an action of the host over. Called by the plug-in in init. This class only
    /// keeps the offer: the host library has no such actions of its own.
    /// @param handler is copied
    virtual void addHandler(const ActionHandler& handler);
    /// Asks to be told of an action, in the same way as addHandler.
    /// @param trigger is copied
    virtual void addTrigger(const ActionTrigger& trigger);
    /// Has the host leave triggers out until enableTriggers, while the plug-in itself does what
    /// they wait for. Adds to those that are left out already.
    /// @param identifiers of the triggers; one that nobody knows is no error
    virtual void disableTriggers(const QSet<int>& identifiers);
    /// Ends what disableTriggers began, for all triggers.
    virtual void enableTriggers();

private:
    QSet<QString> features;
    QList<ActionHandler> handlers;
    QList<ActionTrigger> triggers;
    QSet<int> disabledTriggers;
};

Q_DECLARE_INTERFACE(BasicPlugin, ABSTRACT_PLUGIN_IID)
