// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A host that loads the plug-in, lets it work and then ends in one of the ways in which programs
// end: test-plugin-ending WAY. Whether that does harm is seen from outside, by how the program ends
// and by what valgrind says.

#include "host/document/document.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "host/services/session.h"

#include <QCoreApplication>
#include <QPluginLoader>
#include <QPointer>

#include <QtPlugin>
#include <cstdio>
#include <cxxabi.h>
#include <dlfcn.h>

// declared by no header
namespace __cxxabiv1 {
extern "C" int __cxa_atexit(void (*function)(void*), void* argument, void* library);
}

using namespace Qt::StringLiterals;

namespace {

/// The plug-in's object, watched by a pointer that ends with the program's static objects.
QPointer<QObject> watched;
/// Holds what the plug-in has made, until the program's static objects end.
QSharedPointer<Document> keptDocument;
QObject* deletedLate = nullptr;

void takeDown(QObject* object)
{
    if (auto* const plugin = qobject_cast<BasicPlugin*>(object)) {
        plugin->deinit();
    }
    delete object;
}

/// Takes the plug-in down while static objects are destroyed.
struct StaticOwner
{
    ~StaticOwner() { takeDown(owned); }
    QObject* owned = nullptr;
} staticOwner;

void deleteLate(void* /*unused*/)
{
    takeDown(deletedLate);
}

void registerDeleteLate()
{
    // that it belongs to no library keeps it from being called with this program's own objects
    abi::__cxa_atexit(&deleteLate, nullptr, nullptr);
}

/// What is registered before any library's static objects are made is called after all of them
/// have been destroyed.
[[gnu::section(".preinit_array"),
  gnu::used]] void (*const beforeAllLibraries)() = &registerDeleteLate;

/// The object as a host gets it that does without Qt's loader, which would delete it at the end.
QObject* loadByHand()
{
    void* const library = dlopen(ORVA_PLUGIN_FILE, RTLD_NOW);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return nullptr;
    }
    return reinterpret_cast<QtPluginInstanceFunction>(dlsym(library, "qt_plugin_instance"))();
}

/// A check in which the plug-in makes an object that stays with the document.
void work(BasicLoyaltySystem& system)
{
    keptDocument = QSharedPointer<Document>::create();
    keptDocument->setDocumentType(EDocumentType::Sale);
    const auto record = QSharedPointer<DocumentCardRecord>::create(
        QSharedPointer<Card>::create(u"77"_s), system.getLoyaltySystemType());
    record->setPointsForSpend(10);
    keptDocument->addCardRecord(record);
    auto line = QSharedPointer<GoodsItem>::create();
    line->setPosnum(1);
    line->setSumb(10);
    keptDocument->setGoodsItems({line});
    keptDocument->setPluginValue(
        u"Orva"_s, u"lastResponse"_s,
        u"<RawCheck><items><RawItem><id>1</id><awards><RawItemAwards><allowBonusInCurrency>5.00"
        "</allowBonusInCurrency></RawItemAwards></awards></RawItem></items></RawCheck>"_s);
    static Session session;
    session.setDocument(keptDocument);
    Singleton<Session>::instance = &session;
    system.setDocument(keptDocument);
    system.restoreLoyaltySystem();
    system.spendPoints();
    for (const auto& impact : system.getBonusImpactsForSpend()) {
        keptDocument->addImpact(impact);
    }
}

bool end(const QString& way, QObject* object, QPluginLoader& loader)
{
    if (way == u"deleted"_s) {
        delete object;
    } else if (way == u"taken-down"_s) {
        takeDown(object);
    } else if (way == u"unloaded"_s) {
        // without the hint the library would stay in the process
        loader.setLoadHints({});
        return loader.unload();
    } else if (way == u"deleted-by-a-static-object"_s) {
        staticOwner.owned = object;
    } else if (way == u"deleted-after-all-libraries"_s) {
        deletedLate = object;
    } else {
        return way == u"left"_s;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString way = application.arguments().value(1);
    QPluginLoader loader;
    loader.setLoadHints({});
    loader.setFileName(QStringLiteral(ORVA_PLUGIN_FILE));
    QObject* const object =
        way == u"deleted-after-all-libraries"_s ? loadByHand() : loader.instance();
    auto* const system = qobject_cast<BasicLoyaltySystem*>(object);
    if (system == nullptr || !system->init()) {
        std::fprintf(stderr, "%s\n", qPrintable(loader.errorString()));
        return 2;
    }
    watched = object;
    work(*system);
    if (keptDocument->getImpacts().isEmpty()) {
        std::fprintf(stderr, "the plug-in has made nothing that could stay\n");
        return 2;
    }
    if (!end(way, object, loader)) {
        std::fprintf(stderr, "it cannot end as \"%s\": %s\n", qPrintable(way),
                     qPrintable(loader.errorString()));
        return 2;
    }
    const bool gone = way == u"deleted"_s || way == u"taken-down"_s || way == u"unloaded"_s;
    return watched.isNull() == gone ? 0 : 3;
}
