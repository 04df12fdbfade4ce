// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/report.h"
#include "till/doctor/subject.h"

namespace till::doctor {

/// Looks at a till's set-up and finds what is wrong with it, all at once. Changes nothing: writes
/// no file, leaves the queue alone and sends nothing but one pre-check, which books nothing.
///
/// Ends in less than five seconds whatever is broken: what waits has a limit of its own and waits
/// beside the others.
class Doctor
{
public:
    explicit Doctor(const Subject& given) : subject(given) {}

    /// Does all checks. To be called once, on the host thread; the process's services are the
    /// doctor's meanwhile.
    Report examine();

    /// Whether a thread was left behind that hangs: the process must not wait for it at its end.
    bool leftSomethingBehind() const { return leftBehind; }

private:
    Subject subject;
    bool leftBehind = false;
};

} // namespace till::doctor
