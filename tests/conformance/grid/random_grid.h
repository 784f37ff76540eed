#pragma once

#include "tests/conformance/random_behaviour.h"

// A user and handlers at random on the suite's grid: every event may rebuild the table, take rows and columns
// away, move the focus, hide the window, or end the grid. After each step the table is compared with a plain
// one of our own that was changed alike.
namespace lorv_test {

// How many scripts a run plays: the environment's LORV_TEST_SCRIPTS where it is set, for a long run.
unsigned RandomGridScripts(unsigned usual);

// Plays the script of that number; of two scripts one has handlers that do as they like, in the other nothing
// happens but what the user does. Selection and current cell are not foretold: they must stand within the
// table, without overlaps.
void PlayRandomGrid(RandomUser& user, unsigned script);

// The same of the bridge: in every event that a dialog hears it may empty or rebuild the table, bind it anew,
// destroy the grid or itself, run a modal dialog, post and send messages, change the selection, answer at
// random and raise. Nothing that is gone is touched, and the selection stays within the table.
void PlayRandomBridge(RandomUser& user, unsigned script);

}  // namespace lorv_test
