// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/pluginhost.h"

#include "host/loyalty/basicloyaltysystem.h"
#include "host/loyalty/plugincontract.h"
#include "till/desk/librarylog.h"
#include "till/text.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace till {

PluginHost::PluginHost(const QString& fileName) : file(fileName), loader(fileName)
{
    checkMetadata();
    if (const QString complaint = contractComplaint(fileName); !complaint.isEmpty()) {
        throw PluginFailure(PluginFailure::Step::Contract, complaint);
    }
    librarylog::giveConsole(); // its first lines come when it is made
    QObject* const object = load();
    instance = object;
    try {
        cast(object);
        initialise();
    } catch (...) {
        delete object;
        throw;
    }
}

PluginHost::~PluginHost()
{
    if (!instance.isNull()) {
        // what stands before it to record passes a document on only with the next call
        system->setDocument({});
        plugin->deinit();
        delete instance.data();
    }
}

QString PluginHost::contractComplaint(const QString& fileName)
{
    namespace plugincontract = poshost::plugincontract;
    const std::optional<int> needed = plugincontract::versionNeededBy(fileName);
    if (!needed || *needed == plugincontract::version()) {
        return {};
    }
    return Text::tr(
               "Plug-in contract: %1 was built for version %2 of the host's contract, this till "
               "has version %3; install the plug-in and the till of one release.")
        .arg(fileName)
        .arg(*needed)
        .arg(plugincontract::version());
}

QString PluginHost::requiredIid()
{
    return QStringLiteral(ORVA_PLUGIN_IID);
}

void PluginHost::checkMetadata() const
{
    const QJsonObject metadata = loader.metaData();
    if (metadata.isEmpty()) {
        throw PluginFailure(PluginFailure::Step::Metadata,
                            Text::tr("Plug-in metadata: %1 is no plug-in (%2); check the path.")
                                .arg(file, loader.errorString()));
    }
    const QString iid = metadata.value("IID"_L1).toString();
    if (iid != requiredIid()) {
        throw PluginFailure(
            PluginFailure::Step::Metadata,
            Text::tr("Plug-in metadata: %1 is a plug-in for \"%2\", not for \"%3\" (class "
                     "%4; %5); check the path.")
                .arg(file, iid, requiredIid(), metadata.value("className"_L1).toString(),
                     loader.errorString()));
    }
}

QObject* PluginHost::load()
{
    if (!loader.load()) {
        throw PluginFailure(PluginFailure::Step::Loading,
                            Text::tr("Plug-in loading: %1 cannot be loaded (%2); look for missing "
                                     "libraries and another Qt version.")
                                .arg(file, loader.errorString()));
    }
    QObject* const object = loader.instance();
    if (object == nullptr) {
        throw PluginFailure(
            PluginFailure::Step::Loading,
            Text::tr("Plug-in loading: %1 gives no object (%2).").arg(file, loader.errorString()));
    }
    return object;
}

void PluginHost::cast(QObject* object)
{
    system = qobject_cast<BasicLoyaltySystem*>(object);
    plugin = qobject_cast<BasicPlugin*>(object);
    if (system == nullptr || plugin == nullptr) {
        const QString missing =
            system == nullptr ? QString::fromLatin1(qobject_interface_iid<BasicLoyaltySystem*>())
                              : QString::fromLatin1(qobject_interface_iid<BasicPlugin*>());
        throw PluginFailure(
            PluginFailure::Step::Cast,
            Text::tr("Plug-in cast: the class %1 of %2 does not answer as \"%3\" (%4); it "
                     "was built for another host.")
                .arg(QString::fromLatin1(object->metaObject()->className()), file, missing,
                     loader.errorString()));
    }
}

void PluginHost::initialise()
{
    if (!plugin->init()) {
        throw PluginFailure(
            PluginFailure::Step::Initialisation,
            Text::tr("Plug-in initialisation: %1 does not register (%2); another loyalty "
                     "system has its code.")
                .arg(file, loader.errorString()));
    }
}

} // namespace till
