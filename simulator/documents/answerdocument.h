// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/documents/card.h"
#include "simulator/documents/element.h"
#include "simulator/documents/grant.h"
#include "simulator/documents/messagetext.h"

namespace simulator {

/// The answer to a pre-check of a sale: the check carried back with all its children, the card's
/// owner and balance, what is granted and the messages. What the request itself claimed in the
/// elements of an answer or of a confirmation is dropped first.
/// grant: its lines stand in the order of the request's lines.
Document saleAnswer(const Element& request, const std::vector<Message>& messages, const Card& card,
                    Kopecks balance, const Grant& grant);

/// The answer to a pre-check of a return: the same without allowances and messages; the accruals
/// are negative where points are taken back.
Document returnAnswer(const Element& request, const Card& card, Kopecks balance,
                      const Grant& grant);

/// A copy without the elements that a confirmation adds to an answer.
Document withoutUsed(const Element& confirmation);

/// Reads back what a stored answer granted, line by line.
std::vector<LineGrant> grantedLines(const Element& answer);

} // namespace simulator
