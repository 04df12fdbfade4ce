// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/interface.h"
#include "client/noconnectionexception.h"
#include "contract/slotorder.h"

#include <gtest/gtest.h>
#include <type_traits>
#include <typeinfo>

using namespace Qt::StringLiterals;
using contract::slotOf;

namespace {

tr::Tr noConnection()
{
    return tr::Tr(u"requestNoConnection"_s, u"Нет связи с сервером"_s);
}

} // namespace

TEST(Exception, keepsMessageAndDetail)
{
    const orva::Exception exception(tr::Tr(u"code"_s, u"Текст"_s), u"подробности"_s);
    EXPECT_EQ(exception.tr().id(), u"code"_s);
    EXPECT_EQ(exception.tr().ru(), u"Текст"_s);
    EXPECT_EQ(exception.detail, u"подробности"_s);
}

TEST(Exception, copyKeepsMessageAndDetail)
{
    const orva::Exception exception(tr::Tr(u"code"_s, u"Текст"_s), u"подробности"_s);
    const orva::Exception copy = exception; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.tr(), exception.tr());
    EXPECT_EQ(copy.detail, u"подробности"_s);
}

TEST(Exception, isAHostExceptionWithOneMemberMore)
{
    static_assert(std::is_base_of_v<BasicException, orva::Exception>);
    static_assert(std::is_base_of_v<std::runtime_error, orva::Exception>);
    EXPECT_EQ(sizeof(orva::Exception), sizeof(BasicException) + sizeof(QString));
}

TEST(Exception, overridesNothingBesideTheDestructor)
{
    using What = const char* (std::runtime_error::*)() const noexcept;
    static_assert(std::is_same_v<decltype(&orva::Exception::what), What>);
    static_assert(std::is_same_v<decltype(&orva::NoConnectionException::what), What>);
    // after the two entries of the destructor
    EXPECT_EQ(slotOf(&orva::Exception::what), 2U);
    EXPECT_EQ(slotOf(&orva::NoConnectionException::what), 2U);
}

TEST(NoConnectionException, hasNoDetailAndNoMemberOfItsOwn)
{
    const orva::NoConnectionException exception(noConnection());
    EXPECT_TRUE(exception.detail.isNull());
    EXPECT_EQ(sizeof(orva::NoConnectionException), sizeof(orva::Exception));
}

TEST(NoConnectionException, isCaughtByAHandlerForException)
{
    try {
        throw orva::NoConnectionException(noConnection());
    } catch (const orva::Exception& caught) {
        EXPECT_EQ(typeid(caught), typeid(orva::NoConnectionException));
        EXPECT_EQ(caught.tr(), noConnection());
        EXPECT_TRUE(caught.detail.isEmpty());
    }
}

TEST(NoConnectionException, isCaughtByAHandlerForTheHostsBase)
{
    try {
        throw orva::NoConnectionException(noConnection());
    } catch (const BasicException& caught) {
        EXPECT_EQ(typeid(caught), typeid(orva::NoConnectionException));
        EXPECT_EQ(caught.tr().id(), u"requestNoConnection"_s);
        EXPECT_EQ(caught.tr().ru(), u"Нет связи с сервером"_s);
    }
}

TEST(NoConnectionException, isTheOnlyOneCaughtByItsOwnHandler)
{
    EXPECT_THROW(throw orva::NoConnectionException(noConnection()), orva::NoConnectionException);
    bool caughtAsBase = false;
    try {
        throw orva::Exception(noConnection(), QString());
    } catch (const orva::NoConnectionException&) {
        ADD_FAILURE() << "an exception of the base type was caught as the derived one";
    } catch (const orva::Exception&) {
        caughtAsBase = true;
    }
    EXPECT_TRUE(caughtAsBase);
}

TEST(ThrowIfNoField, namesTheMissingFieldInTheDetail)
{
    try {
        orva::Interface::throwIfNoField(u"client"_s);
        FAIL() << "nothing was thrown";
    } catch (const orva::Exception& caught) {
        EXPECT_EQ(typeid(caught), typeid(orva::Exception));
        EXPECT_EQ(caught.tr().id(), u"requestIncorrectAnswer"_s);
        EXPECT_EQ(caught.tr().ru(), u"Некорректный ответ от сервера"_s);
        EXPECT_EQ(caught.detail,
                  u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: client"_s);
    }
}

TEST(ThrowIfNoField, throwsForAnEmptyNameToo)
{
    try {
        orva::Interface::throwIfNoField(QString());
        FAIL() << "nothing was thrown";
    } catch (const orva::Exception& caught) {
        EXPECT_EQ(caught.detail,
                  u"Ошибка при разборе ответа от сервера. Отсутствует обязательное поле: "_s);
    }
}
