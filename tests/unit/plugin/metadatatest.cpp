// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include <QCborMap>
#include <QCborValue>
#include <QJsonObject>
#include <QPluginLoader>

#include <QtPlugin>
#include <dlfcn.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(Metadata, NamesInterfaceAndClass)
{
    const QPluginLoader loader(QStringLiteral(ORVA_PLUGIN_FILE));
    const QJsonObject metadata = loader.metaData();
    EXPECT_EQ(metadata.value(u"IID"_s).toString(), u"Orva"_s);
    EXPECT_EQ(metadata.value(u"className"_s).toString(), u"Orva"_s);
    EXPECT_TRUE(metadata.value(u"MetaData"_s).toObject().isEmpty());
    EXPECT_FALSE(loader.isLoaded()) << "reading the metadata loads nothing";
}

class MetadataBlock : public ::testing::Test
{
protected:
    MetadataBlock() : library(dlopen(ORVA_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL))
    {
        EXPECT_NE(library, nullptr) << dlerror();
        const auto query = reinterpret_cast<QtPluginMetaDataFunction>(
            library == nullptr ? nullptr : dlsym(library, "qt_plugin_query_metadata_v2"));
        EXPECT_NE(query, nullptr);
        if (query != nullptr) {
            const QPluginMetaData metadata = query();
            block = QByteArray(static_cast<const char*>(metadata.data),
                               static_cast<qsizetype>(metadata.size));
        }
    }
    ~MetadataBlock() override
    {
        if (library != nullptr) {
            dlclose(library);
        }
    }

    void* library;
    QByteArray block;
};

TEST_F(MetadataBlock, BeginsWithTheHeaderThatQtWrites)
{
    // what Qt's own macros write in a translation unit compiled as the plug-in was
    const QPluginMetaData::Header header;
    ASSERT_GE(block.size(), 4);
    EXPECT_EQ(block.left(4).toHex(),
              QByteArray(reinterpret_cast<const char*>(&header), sizeof(header)).toHex());
    EXPECT_EQ(block.at(0), 1) << "the format's version";
    EXPECT_EQ(block.at(1), 6) << "Qt's major version";
    EXPECT_EQ(block.at(2), QT_VERSION_MINOR);
}

TEST_F(MetadataBlock, HoldsNothingButTheTwoNames)
{
    // an open map; key 2 is the IID, key 3 the class name
    const QByteArray names = QByteArray::fromHex("bf"
                                                 "02644f727661"
                                                 "03644f727661"
                                                 "ff");
    EXPECT_EQ(block.mid(4, names.size()).toHex(), names.toHex());
    // an ELF note is filled up to the size of a pointer
    const QByteArray filling = block.mid(4 + names.size());
    EXPECT_EQ(filling, QByteArray(filling.size(), '\0'));
    EXPECT_LT(filling.size(), static_cast<qsizetype>(sizeof(void*)));
    const QCborValue map = QCborValue::fromCbor(block.mid(4));
    EXPECT_EQ(map.toMap(), (QCborMap{{2, u"Orva"_s}, {3, u"Orva"_s}}));
}

} // namespace
