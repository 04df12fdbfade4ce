// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Another version of the plug-in: it asks the server as the real one does, but counts one
// thousandth more of everything.

#include "client/elements.h"
#include "client/exception.h"
#include "client/interface.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "host/services/config.h"
#include "host/services/session.h"

#include <QObject>

using namespace Qt::StringLiterals;

namespace {

class OtherInterface : public orva::Interface
{
public:
    QDomElement getRequestItems(const QList<QSharedPointer<GoodsItem>>& goods,
                                EDocumentType type) const override
    {
        for (const auto& item : goods) {
            item->setQuantity(item->getQuantity() + 0.001);
        }
        const QDomElement items = orva::Interface::getRequestItems(goods, type);
        for (const auto& item : goods) {
            item->setQuantity(item->getQuantity() - 0.001);
        }
        return items;
    }
};

} // namespace

class OtherOrva : public QObject, public BasicLoyaltySystem
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")
    Q_INTERFACES(BasicLoyaltySystem BasicPlugin)

public:
    OtherOrva() { loyaltySystemType = 15; }

    bool init() override
    {
        const Config& config = *Singleton<Config>::instance;
        client.setUrl(config.getString(u"Orva:serverUrl"_s, {}));
        client.setCashData(config.getString(u"Orva:merchantId"_s, {}),
                           config.getString(u"Orva:pos"_s, {}));
        client.setTimeout(config.getInt(u"Orva:timeout"_s, 10));
        return registerLoyaltySystem();
    }
    bool identifyByCard(QSharedPointer<DocumentCardRecord>& card, ECardNumberType) override
    {
        return ask(Singleton<Session>::instance->getDocument(), card);
    }
    bool request(const QSharedPointer<AbstractDocument>& check) override
    {
        return ask(check, check->getCardRecord(loyaltySystemType));
    }

private:
    bool ask(const QSharedPointer<AbstractDocument>& check,
             const QSharedPointer<DocumentCardRecord>& card)
    {
        try {
            client.precheck(check, card);
        } catch (const orva::Exception& error) {
            lastError = error.tr();
            return false;
        }
        return true;
    }

    OtherInterface client;
};

#include "otherquantities.moc"
