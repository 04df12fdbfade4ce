// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <array>
#include <string_view>

namespace watch {

/// A rule about the order of a host's calls: its name, which stays what it is, and a sentence that
/// says what to do instead.
struct Rule
{
    std::string_view name;
    std::string_view sentence;
};

namespace rule {

inline constexpr Rule beforeInit{"before-init",
                                 "Call init, and use the system only when that has returned true."};
inline constexpr Rule initTwice{"init-twice", "Call init once for each object."};
inline constexpr Rule afterDeinit{
    "after-deinit", "deinit ends the work: call nothing after it but the destructor."};
inline constexpr Rule endedWithoutDeinit{"ended-without-deinit",
                                         "Call deinit once before the object is deleted."};
inline constexpr Rule otherThread{"other-thread",
                                  "Make every call on the thread that has loaded the object."};
inline constexpr Rule missingService{
    "missing-service", "Put the host's Config into its Singleton before init, the Session before "
                       "cards and requests, the DBQueueBroker before commit: a system that finds "
                       "none makes one that knows nothing of the host."};
inline constexpr Rule noDocument{"no-document",
                                 "Call setDocument with the document, and hand the document over."};
inline constexpr Rule otherDocument{"other-document",
                                    "Hand over the very document that setDocument was given."};
inline constexpr Rule sessionDocument{
    "session-document", "Make the document the session's as well: cards are identified on the "
                        "session's document, and what must survive a restart is kept there."};
inline constexpr Rule documentType{
    "document-type", "Ask and confirm for sales and for returns by sale only: nothing else can be "
                     "sent."};
inline constexpr Rule noCard{
    "no-card", "Give the document a record with a card for this system first; without one go on "
               "without the system."};
inline constexpr Rule notCleared{
    "not-cleared", "Call clearAfterClose, rollback or clearLoyaltyData for one document before the "
                   "next: otherwise it inherits points, impacts and answer."};
inline constexpr Rule afterClose{"after-close",
                                 "This document is closed and confirmed: open another one."};
inline constexpr Rule impactsLeft{
    "impacts-left", "Take this system's impacts off the document before asking anew: otherwise its "
                    "discounts are granted upon discounts."};
inline constexpr Rule spendWithoutRequest{"spend-without-request",
                                          "Points can be set and spent after a successful request, "
                                          "or a restore, for this document only."};
inline constexpr Rule pointsLeft{
    "points-left",
    "Take the points spent before off the document first: they would be spent twice."};
inline constexpr Rule recalculateWithoutSpending{
    "recalculate-without-spending",
    "Recalculate after spendPoints, with the points that were placed set as the points to spend."};
inline constexpr Rule recalculateTwice{
    "recalculate-twice", "Recalculate once for each spendPoints: every call scales what the call "
                         "before has left."};
inline constexpr Rule commitWithoutRequest{
    "commit-without-request",
    "Confirm a sale only after a successful request, or a restore, for this very document: "
    "otherwise an earlier customer's check is confirmed a second time."};
inline constexpr Rule changedSinceRequest{
    "changed-since-request", "The goods have changed since the request: ask again before closing, "
                             "what is confirmed is the answer to the former goods."};
inline constexpr Rule commitTwice{
    "commit-twice", "Confirm once. When closing fails after that, call rollback and "
                    "restoreLoyaltySystem before the next attempt: confirming changes the answer."};
inline constexpr Rule clearedUnconfirmed{
    "cleared-unconfirmed", "clearAfterClose follows commit; a document that is given up is rolled "
                           "back. Otherwise its confirmation is lost."};
inline constexpr Rule restoreOverData{
    "restore-over-data", "Clear first (rollback or clearLoyaltyData): restoring adds the accruals "
                         "to those that are held."};
inline constexpr Rule restoreWithoutState{
    "restore-without-state", "Nothing was kept in this document: keep its plug-in data with a "
                             "suspended check, or request anew instead of restoring."};
inline constexpr Rule documentLeft{"document-left",
                                   "Lay the document down (setDocument with null) before deinit."};

} // namespace rule

/// All rules, for whoever lists them.
inline constexpr std::array allRules{rule::beforeInit,
                                     rule::initTwice,
                                     rule::afterDeinit,
                                     rule::endedWithoutDeinit,
                                     rule::otherThread,
                                     rule::missingService,
                                     rule::noDocument,
                                     rule::otherDocument,
                                     rule::sessionDocument,
                                     rule::documentType,
                                     rule::noCard,
                                     rule::notCleared,
                                     rule::afterClose,
                                     rule::impactsLeft,
                                     rule::spendWithoutRequest,
                                     rule::pointsLeft,
                                     rule::recalculateWithoutSpending,
                                     rule::recalculateTwice,
                                     rule::commitWithoutRequest,
                                     rule::changedSinceRequest,
                                     rule::commitTwice,
                                     rule::clearedUnconfirmed,
                                     rule::restoreOverData,
                                     rule::restoreWithoutState,
                                     rule::documentLeft};

} // namespace watch
