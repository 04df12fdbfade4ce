// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/basicexception.h"
#include "host/services/config.h"
#include "host/xml/xmlwrapper.h"
#include "tests/unit/client/printers.h"

#include <QDomDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

/// Stands for what a plug-in derives from the host's base.
class OwnException : public BasicException
{
public:
    using BasicException::BasicException;
};

const tr::Tr noConnection(u"requestNoConnection"_s, u"Нет связи с сервером"_s);

TEST(Tr, KeepsIdentifierAndRussianText)
{
    EXPECT_EQ(noConnection.id(), u"requestNoConnection"_s);
    EXPECT_EQ(noConnection.ru(), u"Нет связи с сервером"_s);
    EXPECT_FALSE(noConnection.isEmpty());
    EXPECT_TRUE(tr::Tr().isEmpty());
    EXPECT_TRUE(tr::Tr().ru().isEmpty());
}

TEST(Tr, IsEqualWhenBothTextsAre)
{
    const tr::Tr copy(noConnection);
    EXPECT_EQ(copy, noConnection);
    EXPECT_FALSE(noConnection == tr::Tr(u"requestNoConnection"_s, u"Нет связи"_s));
    EXPECT_FALSE(noConnection == tr::Tr(u"noConnection"_s, u"Нет связи с сервером"_s));
    EXPECT_EQ(tr::Tr(), tr::Tr());
}

TEST(Tr, OneTextIsEnoughNotToBeEmpty)
{
    EXPECT_FALSE(tr::Tr(u"code"_s, QString()).isEmpty());
    EXPECT_FALSE(tr::Tr(QString(), u"текст"_s).isEmpty());
}

TEST(Tr, IsPolymorphicByItsDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<tr::Tr>);
}

TEST(BasicException, KeepsACopyOfItsMessage)
{
    tr::Tr message(noConnection);
    const BasicException exception(message);
    message = tr::Tr();
    EXPECT_EQ(exception.tr(), noConnection);
}

TEST(BasicException, IsARuntimeErrorThatSaysBothTexts)
{
    try {
        throw BasicException(noConnection);
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()), "requestNoConnection: Нет связи с сервером");
        return;
    }
    FAIL() << "not caught";
}

TEST(BasicException, OneThrownInTheHostLibraryIsCaughtOutside)
{
    const QTemporaryDir folder;
    Config config;
    try {
        config.load(folder.filePath(u"missing.toml"_s));
    } catch (const BasicException& exception) {
        EXPECT_EQ(exception.tr().id(), u"configError"_s);
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(BasicException, ADerivedOnePassesThroughTheHostLibrary)
{
    QDomDocument document;
    document.appendChild(document.createElement(u"RawCheck"_s));
    const auto refuse = [](const QString&) { throw OwnException(noConnection); };
    EXPECT_THROW(XmlWrapper().extractElement(document.documentElement(), {u"client"_s}, refuse),
                 OwnException);
    EXPECT_THROW(XmlWrapper().extractElement(document.documentElement(), {u"client"_s}, refuse),
                 BasicException);
}

} // namespace
