// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "summarycell.h"

// Whose trials a plot shows: one participant, by position in
// SummaryResult::participants, or every participant of the table together.
struct ParticipantChoice
{
    static constexpr int kAll = -1;

    int participant = kAll;

    bool IsAll() const { return participant == kAll; }
    bool Includes(const SummaryCell &cell) const { return IsAll() || cell.participant == participant; }
};
