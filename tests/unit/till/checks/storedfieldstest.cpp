// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The fields of a check: none is left out by those who store, record or show it, and a check that
// was stored before a field came about is read.

#include "host/database/statement.h"
#include "host/document/discountimpact.h"
#include "tests/unit/till/storedform.h"
#include "tests/unit/till/tilltest.h"
#include "till/checks/checkcodec.h"
#include "till/checks/documentfields.h"
#include "till/checks/fieldstream.h"
#include "till/checks/linefields.h"
#include "till/checks/storedvalues.h"
#include "till/recording/documentjson.h"
#include "till/recording/fieldjson.h"

#include <QJsonArray>
#include <QPoint>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using tests::refusalOf;
namespace storedform = tests::storedform;
using till::Check;
using till::Field;
using till::Line;
using till::LineField;

namespace {

/// As a record has it.
QJsonObject recordOf(const Document& document)
{
    QJsonObject object = till::documentjson::fieldsOf(document);
    for (const till::documentjson::Part& part : till::documentjson::parts()) {
        object.insert(part.name, part.json(document));
    }
    return object;
}

/// Stands for a member of whatever type.
struct AnyMember
{
    template <typename Value>
    operator Value() const // NOLINT(google-explicit-constructor): that is what it is for
    {
        return Value();
    }
};

/// How many members an aggregate has.
template <typename Aggregate, typename... Members>
constexpr int memberCount()
{
    if constexpr (requires { Aggregate{Members{}..., AnyMember{}}; }) {
        return memberCount<Aggregate, Members..., AnyMember>();
    } else {
        return int(sizeof...(Members));
    }
}

/// The setters that the header of a contract shows, their overloads once.
int setterCount(const QString& header)
{
    QFile file(QStringLiteral(ORVA_CONTRACTS) + u'/' + header);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << header.toStdString();
    static const QRegularExpression setter(u"void (set[A-Z]\\w+)\\("_s);
    QSet<QString> names;
    auto matches = setter.globalMatch(QString::fromUtf8(file.readAll()));
    while (matches.hasNext()) {
        names.insert(matches.next().captured(1));
    }
    return int(names.size());
}

/// A value that no new object has, another one for each number.
template <typename Value>
Value valueOf(int number)
{
    if constexpr (std::is_same_v<Value, bool>) {
        return true;
    } else if constexpr (std::is_same_v<Value, QString>) {
        return u"value %1"_s.arg(number);
    } else if constexpr (std::is_same_v<Value, QDateTime>) {
        return QDateTime(QDate(2026, 2, 3), QTime(4, 5, 6, number));
    } else if constexpr (std::is_same_v<Value, QVariant>) {
        return QVariant(double(number) + 0.25);
    } else {
        return Value(number);
    }
}

/// Sets every field, as far as an enumeration lets it.
template <typename Owner>
void fill(Owner& owner, const QList<Field<Owner>>& fields)
{
    int number = 0;
    for (const Field<Owner>& field : fields) {
        ++number;
        std::visit(
            [&](const auto& access) {
                using Value = std::decay_t<decltype(access.get(owner))>;
                access.set(owner, valueOf<Value>(field.largest ? 1 : number));
            },
            field.access);
    }
}

Line filledLine()
{
    Line line;
    int number = 0;
    for (const LineField& field : till::linefields::all()) {
        ++number;
        std::visit(
            [&](auto member) {
                using Value = std::decay_t<decltype(line.*member)>;
                line.*member = valueOf<Value>(number);
            },
            field.member);
    }
    line.returnedThousandths = line.thousandths - 1;
    return line;
}

/// Which fields one object has as another one does.
QStringList sameIn(const QJsonObject& one, const QJsonObject& other)
{
    QStringList same;
    for (const QString& key : one.keys()) {
        if (one.value(key) == other.value(key)) {
            same.append(key);
        }
    }
    return same;
}

/// Every member, in the order of Line.
std::string membersOf(const Line& line)
{
    QStringList values{QString::number(line.position), line.code, line.name,
                       line.fractional ? u"weighed"_s : u"pieces"_s};
    for (const qint64 value :
         {line.priceKopecks, line.minPriceKopecks, line.thousandths, line.returnedThousandths,
          line.sumKopecks, line.discountKopecks, line.spentKopecks, line.awardedKopecks,
          line.earnedKopecks, line.givenBackKopecks, line.takenBackKopecks}) {
        values.append(QString::number(value));
    }
    return values.join(u' ').toStdString();
}

class StoredFieldsTest : public tests::TillTest
{
protected:
    /// A return with every field that there is.
    static Check fullCheck()
    {
        Check check = Check::create(EDocumentType::ReturnBySale, 7, {filledLine()});
        const auto card = Check::newCardRecord(u"2200000000017"_s, 15);
        fill(*card, till::documentfields::ofCardRecord());
        check.document->addCardRecord(card);
        const auto detail = QSharedPointer<DocumentImpactDetail>::create();
        fill(*detail, till::documentfields::ofImpactDetail());
        detail->setCardRecord(card);
        check.document->addImpact(QSharedPointer<DiscountImpact>::create(detail));
        check.document->setSaleDocumentId(u"sale"_s);
        check.document->setPaymentKopecks(12'34);
        check.loyalty = till::LoyaltyState::Ready;
        check.refusal = u"why"_s;
        check.points = till::PointsChoice::sum(5'00);
        check.pointsTouched = true;
        check.systemEarnKopecks = 77;
        check.cashierMessages = {u"one"_s};
        check.clientMessages = {u"two"_s, u"three"_s};
        check.tenderedKopecks = 88;
        check.confirmed = true;
        check.returnsBefore = 3;
        return check;
    }
};

} // namespace

TEST_F(StoredFieldsTest, everyMemberOfALineHasARow)
{
    static_assert(memberCount<Line>() > 10);
    EXPECT_EQ(till::linefields::all().size(), memberCount<Line>());
    EXPECT_EQ(till::linefields::stored().size(), memberCount<Line>());
}

TEST_F(StoredFieldsTest, everySetterOfTheContractsHasAField)
{
    // a unit has two fields
    EXPECT_EQ(till::linefields::ofItem().size(), setterCount(u"goodsitem.h"_s) + 1);
    EXPECT_EQ(till::documentfields::ofCardRecord().size(), setterCount(u"documentcardrecord.h"_s));
    // the card record is kept as a reference
    EXPECT_EQ(till::documentfields::ofImpactDetail().size(),
              setterCount(u"documentimpactdetail.h"_s) - 1);
    // goods lines and plug-in data, one value of it and all, are kept apart
    EXPECT_EQ(till::documentfields::ofDocument().size(), setterCount(u"document.h"_s) - 3);
}

TEST_F(StoredFieldsTest, aStoredCheckComesBackWithEveryField)
{
    const Check check = fullCheck();
    const Check read = till::checkcodec::decode(till::checkcodec::encode(check), u"c1"_s);
    EXPECT_EQ(read.lines, check.lines);
    EXPECT_EQ(recordOf(*read.document), recordOf(*check.document));
    EXPECT_EQ(read.loyalty, check.loyalty);
    EXPECT_EQ(read.refusal, check.refusal);
    EXPECT_EQ(read.points.kind, check.points.kind);
    EXPECT_EQ(read.points.kopecks, check.points.kopecks);
    EXPECT_EQ(read.pointsTouched, check.pointsTouched);
    EXPECT_EQ(read.systemEarnKopecks, check.systemEarnKopecks);
    EXPECT_EQ(read.cashierMessages, check.cashierMessages);
    EXPECT_EQ(read.clientMessages, check.clientMessages);
    EXPECT_EQ(read.tenderedKopecks, check.tenderedKopecks);
    EXPECT_EQ(read.confirmed, check.confirmed);
    EXPECT_EQ(read.returnsBefore, check.returnsBefore);
    // the server's words are for whoever stands at the till now, and not stored
    EXPECT_EQ(memberCount<Check>(), 12 + 1) << "compare the new one too";
}

TEST_F(StoredFieldsTest, aRecordHasEveryField)
{
    const QJsonObject written = recordOf(*fullCheck().document);
    const auto document = till::documentjson::toDocument(written);
    EXPECT_EQ(recordOf(*document), written);
    GoodsItem noItem;
    const QJsonObject item = written.value(u"goods"_s).toArray().first().toObject();
    EXPECT_EQ(item.size(), till::linefields::ofItem().size());
    EXPECT_EQ(sameIn(till::fieldjson::write(noItem, till::linefields::ofItem()), item),
              QStringList());
    const QJsonObject impact = written.value(u"impacts"_s).toArray().first().toObject();
    EXPECT_EQ(sameIn(till::fieldjson::write(DocumentImpactDetail(),
                                            till::documentfields::ofImpactDetail()),
                     impact),
              QStringList());
    const QJsonObject card = written.value(u"cards"_s).toArray().first().toObject();
    EXPECT_EQ(
        sameIn(till::fieldjson::write(DocumentCardRecord(), till::documentfields::ofCardRecord()),
               card),
        QStringList());
}

TEST_F(StoredFieldsTest, whatTheFirstKeptVersionStoredIsReadWhole)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVA_FIXTURES) + u"/0.9.0/visit/till.sqlite"_s,
                            folder.file(u"old.sqlite"_s)));
    QFile::setPermissions(folder.file(u"old.sqlite"_s), QFile::ReadOwner | QFile::WriteOwner);
    const auto old = QSharedPointer<poshost::Database>::create(folder.file(u"old.sqlite"_s));
    poshost::Statement statement(*old, u"SELECT id, data FROM checks WHERE data IS NOT NULL"_s);
    QMap<int, std::string> lines;
    while (statement.next()) {
        const QString id = statement.value(0).toString();
        const QByteArray stored = statement.value(1).toByteArray();
        const Check check = till::checkcodec::decode(stored, id);
        lines.insert(check.number(), membersOf(check.lines.first()));
        const QByteArray again = till::checkcodec::encode(check);
        if (storedform::versionOf(again) == storedform::versionOf(stored)) {
            EXPECT_EQ(again, stored) << id.toStdString();
        }
        EXPECT_EQ(till::checkcodec::decode(again, id).lines, check.lines) << id.toStdString();
    }
    ASSERT_EQ(lines.size(), 8);
    EXPECT_EQ(lines.value(1),
              "1 1001 Чай чёрный, 100 г pieces 14990 10000 2000 0 29980 3063 13459 1346 688 0 0");
    EXPECT_EQ(lines.value(2),
              "1 1001 Чай чёрный, 100 г pieces 14990 10000 2000 1000 14990 1532 0 0 0 6730 344");
}

TEST_F(StoredFieldsTest, aValueOfAKindThatIsNeverStoredOrTooDeepIsRefused)
{
    const auto statusOf = [](const QVariant& value) {
        QByteArray bytes;
        QDataStream written(&bytes, QIODevice::WriteOnly);
        written << value;
        QDataStream stream(bytes);
        till::storedvalues::readVariant(stream);
        return stream.status();
    };
    EXPECT_EQ(statusOf(QPoint(1, 2)), QDataStream::ReadCorruptData);
    EXPECT_EQ(statusOf(u"text"_s), QDataStream::Ok);
    QVariant inMaps;
    QVariant inLists;
    for (int depth = 0; depth < 32; ++depth) {
        inMaps = QVariantMap{{u"in"_s, inMaps}};
        inLists = QVariantList{inLists};
    }
    EXPECT_EQ(statusOf(inMaps), QDataStream::Ok);
    EXPECT_EQ(statusOf(inLists), QDataStream::Ok);
    EXPECT_EQ(statusOf(QVariantMap{{u"in"_s, inMaps}}), QDataStream::ReadCorruptData);
    EXPECT_EQ(statusOf(QVariantList{inLists}), QDataStream::ReadCorruptData);
}

TEST_F(StoredFieldsTest, aCheckOfTheNextVersionIsRefused)
{
    const QByteArray present = till::checkcodec::encode(fullCheck());
    const QByteArray newer = storedform::withVersion(present, storedform::versionOf(present) + 1);
    EXPECT_EQ(refusalOf([&] { till::checkcodec::decode(newer, u"c1"_s); }),
              u"The stored check c1 was written by a newer till; use that one."_s);
}

namespace {

/// Something that has got a field in version 3 and another one in version 5.
struct Grown
{
    int first = 0;
    QString second;
    qint64 third = 0;
    int last = 0;
};
using GrownField = till::FieldOf<Grown, int, qint64, QString>;

template <typename Value>
GrownField grownField(const QString& name, Value Grown::*member, int since,
                      const std::function<void(Grown&)>& fromOlder = {})
{
    return {name,
            till::Access<Grown, Value>{
                [member](const Grown& grown) { return grown.*member; },
                [member](Grown& grown, const Value& value) { grown.*member = value; }},
            since, std::nullopt, fromOlder};
}

QList<GrownField> grownFields()
{
    return {grownField(u"first"_s, &Grown::first, 1), grownField(u"second"_s, &Grown::second, 3),
            grownField(u"third"_s, &Grown::third, 5,
                       [](Grown& grown) { grown.third = grown.first + grown.last; }),
            grownField(u"last"_s, &Grown::last, 1)};
}

/// What a build wrote that knew the fields up to a version.
QByteArray writtenBy(int version, const Grown& grown)
{
    QList<GrownField> known = grownFields();
    known.removeIf([version](const GrownField& field) { return field.since > version; });
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    till::fieldstream::write(stream, grown, known);
    return bytes;
}

Grown readGrown(const QByteArray& bytes, int version)
{
    QDataStream stream(bytes);
    Grown grown;
    till::fieldstream::read(stream, grown, grownFields(), version);
    EXPECT_TRUE(stream.status() == QDataStream::Ok && stream.atEnd());
    return grown;
}

} // namespace

TEST(FieldStreamTest, aFieldMakesTheVersionThatItCameWith)
{
    EXPECT_EQ(till::fieldstream::versionOf(grownFields()), 5);
}

TEST(FieldStreamTest, whatAnOlderBuildWroteIsReadAndPutRight)
{
    const Grown written{7, u"text"_s, 100, 35};
    for (const int version : {1, 2, 3, 4, 5, 6}) {
        const Grown read = readGrown(writtenBy(version, written), version);
        EXPECT_EQ(read.first, 7) << version;
        EXPECT_EQ(read.second, version < 3 ? QString() : u"text"_s) << version;
        EXPECT_EQ(read.third, version < 5 ? 42 : 100) << version;
        EXPECT_EQ(read.last, 35) << version;
    }
}

TEST(FieldJsonTest, aLaterFieldIsLeftOutOfARecordWhileItHoldsNothing)
{
    const QList<Field<GoodsItem>> fields{
        till::field::of(u"code"_s, &GoodsItem::getCode, &GoodsItem::setCode),
        till::field::of(u"name"_s, &GoodsItem::getName, &GoodsItem::setName, 3)};
    GoodsItem item;
    EXPECT_EQ(till::fieldjson::write(item, fields).keys(), QStringList{u"code"_s});
    item.setName(u"x"_s);
    const QJsonObject written = till::fieldjson::write(item, fields);
    EXPECT_EQ(written.keys(), (QStringList{u"code"_s, u"name"_s}));
    GoodsItem read;
    till::fieldjson::read(written, read, fields);
    EXPECT_EQ(read.getName(), u"x"_s);
    till::fieldjson::read(QJsonObject{{u"code"_s, u"y"_s}}, read, fields);
    EXPECT_EQ(read.getName(), QString());
}
