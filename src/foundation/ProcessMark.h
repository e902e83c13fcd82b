// A mark that a running program leaves on something it holds, by which another program can tell later whether it still runs.
//
// It names the computer, what was started when on it, and the process with the moment of its start, so that a number that was given to
// another process since is not taken for it.
#pragma once

#include <string>
#include <string_view>

namespace processMark {

enum class Life { unknown /* on another computer, out of sight, or no mark that says anything */, running, ended };

/// The mark of this process; empty where the system does not say enough.
std::string own();
/// Whether the process that left the mark still runs.
Life lifeOf(std::string_view mark);

} // namespace processMark
