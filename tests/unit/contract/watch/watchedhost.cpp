// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/contract/watch/watchedhost.h"

#include <QFile>
#include <QPluginLoader>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

QSharedPointer<GoodsItem> line(int position, double sum)
{
    auto item = QSharedPointer<GoodsItem>::create();
    item->setPosnum(position);
    item->setCode(u"100%1"_s.arg(position));
    item->setQuantity(1);
    item->setPrice(sum);
    item->setSumb(sum);
    return item;
}

} // namespace

WatchedHost::WatchedHost()
{
    qputenv("POSHOST_WATCH_FILE", QFile::encodeName(folder.filePath(u"findings"_s)));
    QPluginLoader loader(QStringLiteral(ORVA_WATCH));
    object = loader.instance();
    EXPECT_FALSE(object.isNull()) << loader.errorString().toStdString();
}

WatchedHost::~WatchedHost()
{
    delete object.data();
    qunsetenv("POSHOST_WATCH_FILE");
    qunsetenv("POSHOST_WATCH_FAIL");
}

QSharedPointer<Document> WatchedHost::sale(const QString& id)
{
    auto document = QSharedPointer<Document>::create();
    document->setDocumentId(id);
    document->setDocumentType(EDocumentType::Sale);
    document->setGoodsItems({line(1, 100), line(2, 50)});
    document->addCardRecord(
        QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>::create(u"77"_s), 15));
    return document;
}

QSharedPointer<Document> WatchedHost::returnOf(const QString& saleId)
{
    auto document = sale(u"return of "_s + saleId);
    document->setDocumentType(EDocumentType::ReturnBySale);
    document->setSaleDocumentId(saleId);
    return document;
}

BasicLoyaltySystem& WatchedHost::system() const
{
    return *qobject_cast<BasicLoyaltySystem*>(object.data());
}

void WatchedHost::takeUp(const QSharedPointer<Document>& document)
{
    session.setDocument(document);
    system().setDocument(document);
}

void WatchedHost::layDown()
{
    session.setDocument({});
    system().setDocument({});
}

void WatchedHost::takeDown()
{
    system().deinit();
    delete object.data();
}

QString WatchedHost::written() const
{
    QFile file(folder.filePath(u"findings"_s));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList WatchedHost::findings() const
{
    QStringList found;
    const QStringList lines = written().split(u'\n', Qt::SkipEmptyParts);
    for (const QString& text : lines) {
        const QStringList parts = text.split(u": "_s);
        if (parts.size() > 2) {
            found.append(parts.at(1) + u" in "_s + parts.at(2));
        }
    }
    return found;
}

} // namespace tests
