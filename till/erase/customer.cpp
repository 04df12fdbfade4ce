// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/erase/customer.h"

#include "till/checks/check.h"
#include "till/checks/checkcodec.h"
#include "till/failure.h"
#include "till/person/cardspelling.h"
#include "till/person/personincheck.h"
#include "till/person/personinrecord.h"
#include "till/text.h"

#include <QStringEncoder>

namespace till {
namespace {

QString usableNumber(const QString& written)
{
    const QString plain = cardspelling::plain(written);
    if (written.contains(u'*') || plain.size() < cardspelling::shortest) {
        throw Failure(Text::tr("\"%1\" is no whole card number of at least %2 characters; shorter "
                               "ones cannot be told from sums and codes.")
                          .arg(written)
                          .arg(cardspelling::shortest),
                      ExitCode::Usage);
    }
    return plain;
}

} // namespace

Customer::Customer(const QString& card)
    : number(usableNumber(card)), known{{number}, {}}, alone(known)
{}

void Customer::learn(const Check& check)
{
    if (isIn(check)) {
        known.names.unite(personincheck::of(check).names);
    }
}

void Customer::learn(const QByteArray& record)
{
    if (isInRecord(record)) {
        known.names.unite(personinrecord::of(record).names);
    }
}

bool Customer::isIn(const Check& check) const
{
    return checkcodec::encode(personincheck::masked(check, alone)) != checkcodec::encode(check);
}

bool Customer::isInRecord(const QByteArray& record) const
{
    return personinrecord::masked(record, alone) != record;
}

bool Customer::isInBytes(const QByteArray& bytes) const
{
    QStringEncoder wide(QStringConverter::Utf16BE);
    const QByteArray inCheck = wide(number);
    return bytes.contains(inCheck) || isInText(QString::fromUtf8(bytes));
}

} // namespace till
