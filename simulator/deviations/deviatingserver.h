// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/deviations/deviation.h"

#include <memory>

namespace simulator {

/// Stands in front of a sound server and does wrong what deviations say. What it changes in the
/// answer to a pre-check it takes out of the confirmation that is built from it, so that the sound
/// server understands that: a real server that writes its answers wrong reads them again.
class DeviatingServer
{
public:
    /// The first deviation is nearest to the sound server. Those of booking and unknown names are
    /// passed over.
    DeviatingServer(Handler sound, const QStringList& names);

    /// Answers one request. May be called from several threads at once if the sound server may.
    Answer handle(const Request& request) const { return outermost(request); }

private:
    std::vector<std::shared_ptr<Notes>> allNotes;
    Handler outermost;
};

} // namespace simulator
