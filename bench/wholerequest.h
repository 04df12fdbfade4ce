// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "bench/cannedtransport.h"
#include "bench/parts.h"
#include "bench/requestfloor.h"

namespace bench {

/// A whole request by the plug-in's class, answered without a network. Needs a Workplace.
class WholeRequest : public Part
{
public:
    explicit WholeRequest(int lines);
    ~WholeRequest() override;

    void run() override;
    /// Whether request and written state are those of the floor.
    bool isLike(const RequestFloor& floor) const;

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation;
};

} // namespace bench
