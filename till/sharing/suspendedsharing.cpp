// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/sharing/suspendedsharing.h"

#include "store/sharedbooks.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/text.h"

#include <QUuid>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace till {

using orvastore::LeftCheck;
using orvastore::StoreEnd;
using orvastore::StoreResult;
using orvastore::TakeUp;
using poshost::Message;

namespace {

QString newKey()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

/// Everything that one wish of the cashier asks of the store has one time together.
class OneWait
{
public:
    explicit OneWait(SharedStore& store) : books(store.books())
    {
        books.setEnd(QDeadlineTimer(store.timeout()));
    }
    ~OneWait() { books.setEnd(QDeadlineTimer(QDeadlineTimer::Forever)); }
    OneWait(const OneWait&) = delete;
    OneWait& operator=(const OneWait&) = delete;

private:
    orvastore::SharedBooks& books;
};

} // namespace

void SuspendedSharing::begin(const Check& check)
{
    const QString mark = newKey();
    left.begin(check, mark);
    begun = mark;
}

void SuspendedSharing::settle(QStringList& notices)
{
    if (left.unfinished().isEmpty() && left.takeUps().isEmpty()) {
        return;
    }
    try {
        store.books();
    } catch (const Failure& failure) { // the module that knows the store is missing
        const QString untold = std::exchange(begun, {});
        const QList<Leaving> leavings = left.unfinished();
        for (const Leaving& leaving : leavings) {
            if (leaving.mark == untold) {
                left.keepHere(leaving);
            }
        }
        notices.append(failure.text());
        return;
    }
    const OneWait wait(store);
    settleAll(notices);
}

void SuspendedSharing::settleLeftBehind(QSet<QString>& seen, QStringList& notices)
{
    QSet<QString> here;
    const QList<Leaving> leavings = left.unfinished();
    for (const Leaving& leaving : leavings) {
        here.insert(leaving.mark);
    }
    const QList<TakeUpNote> notes = left.takeUps();
    for (const TakeUpNote& note : notes) {
        here.insert(note.token);
    }
    const QSet<QString> known = std::exchange(seen, here);
    if (known.intersects(here)) {
        const OneWait wait(store);
        settleAll(notices, [&](const QString& key) { return known.contains(key); });
    }
}

/// The check that somebody waits for comes first.
/// @return why the store cannot be asked for more just now; empty when it can
Message SuspendedSharing::settleAll(QStringList& notices, const Choice& isChosen)
{
    const auto isLeftOut = [&](const QString& key) { return isChosen && !isChosen(key); };
    QList<Leaving> leavings = left.unfinished();
    const QString first = std::exchange(begun, {});
    std::stable_partition(leavings.begin(), leavings.end(),
                          [&](const Leaving& one) { return one.mark == first; });
    for (const Leaving& leaving : std::as_const(leavings)) {
        if (isLeftOut(leaving.mark)) {
            continue;
        }
        const Message trouble =
            leave(leaving, leaving.mark == first ? Try::First : Try::Further, notices);
        if (!trouble.isEmpty()) {
            return trouble;
        }
    }
    const QList<TakeUpNote> notes = left.takeUps();
    for (const TakeUpNote& note : notes) {
        if (isLeftOut(note.token)) {
            continue;
        }
        const Message trouble = note.id.isEmpty() ? ask(note) : tell(note, notices);
        if (!trouble.isEmpty()) {
            return trouble;
        }
    }
    return {};
}

Message SuspendedSharing::leave(const Leaving& leaving, Try which, QStringList& notices)
{
    if (which == Try::Further && !left.askAgain(leaving)) {
        return {}; // another process has got an answer
    }
    LeftCheck check;
    check.shop = store.shop();
    check.till = store.till();
    check.identifier = leaving.id;
    check.number = leaving.number;
    check.leftAt = leaving.begunAt;
    check.mark = leaving.mark;
    check.content = leaving.content;
    const StoreResult result = store.books().leave(check);
    if (result.end == StoreEnd::Done) {
        left.finish(leaving);
        return {};
    }
    if (result.end != StoreEnd::Unknown && which == Try::First && left.keepHere(leaving)) {
        notices.append(Text::tr("Check %1 is suspended at this till alone (%2).")
                           .arg(leaving.id, said(result.error)));
    } else {
        notices.append(Text::tr("Whether the store has the suspended check %1 is not known (%2); "
                                "it is asked again.")
                           .arg(leaving.id, said(result.error)));
    }
    return result.end == StoreEnd::Refused ? Message() : result.error;
}

/// Repeats what was asked before.
Message SuspendedSharing::ask(const TakeUpNote& note)
{
    if (!left.askAgain(note)) {
        return {};
    }
    const TakeUp taken = store.books().takeUp(store.shop(), note.which, store.till(), note.token);
    if (taken.result.end == StoreEnd::Done && taken.check) {
        return take(note, *taken.check);
    }
    if (taken.isOver) {
        left.forget(note.token);
        return {};
    }
    return taken.result.error;
}

/// @return why the check cannot be used here; then it is left again for the others
Message SuspendedSharing::take(const TakeUpNote& note, const LeftCheck& given)
{
    try {
        const Check check = checkcodec::decode(given.content, given.identifier);
        if (check.id() != given.identifier) {
            throw Failure(checkcodec::damagedText(given.identifier));
        }
        left.takeIn(note.token, check);
    } catch (const Failure& failure) {
        LeftCheck back = given;
        back.till = store.till();
        back.mark = note.token;
        if (store.books().leave(back).end == StoreEnd::Done) {
            left.forget(note.token);
        }
        return Message::plain(failure.text());
    }
    if (store.books().settleTakeUp(store.shop(), note.token).end == StoreEnd::Done) {
        left.forget(note.token);
    }
    return {};
}

/// Tells the store that a check is durable here.
Message SuspendedSharing::tell(const TakeUpNote& note, QStringList& notices)
{
    const StoreResult result = store.books().settleTakeUp(store.shop(), note.token);
    const bool isReleased = result.error.code() == "store.suspendedReleased"_L1;
    if (isReleased && own.hasSuspended(note.id)) {
        own.abandon(own.loadSuspended(note.id));
        notices.append(
            Text::tr("The suspended check %1 was released to another till and is given up here.")
                .arg(note.id));
    }
    if (result.end == StoreEnd::Done || isReleased) {
        left.forget(note.token);
        return {};
    }
    return result.error;
}

void SuspendedSharing::takeUp(const QString& which, QStringList& notices)
{
    const OneWait wait(store);
    Message trouble = settleAll(notices);
    if (trouble.isEmpty() && !own.hasSuspended(which)) {
        const TakeUpNote note{newKey(), which, {}};
        left.noteTakeUp(note.token, which);
        const TakeUp taken = store.books().takeUp(store.shop(), which, store.till(), note.token);
        if (taken.result.end == StoreEnd::Done && taken.check) {
            trouble = take(note, *taken.check);
        } else {
            trouble = taken.result.error;
            if (taken.result.end != StoreEnd::Unknown) {
                left.forgetUnasked(
                    note.token); // the store has got nothing of this, its first asking
            }
        }
    }
    if (own.hasSuspended(which)) {
        return;
    }
    throw Failure(Text::tr("Check %1 is not restored (%2); when that is put right, restore it "
                           "again.")
                      .arg(which, said(trouble)));
}

} // namespace till
