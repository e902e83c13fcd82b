// Several programs that try the same thing at the same moment.
#pragma once

#include <functional>
#include <vector>

/// Starts that many copies of this program, which wait for each other and then make their attempt. Answers what the attempts
/// answered, a number from 0 to 255 each; -1 for a copy that crashed. meanwhile runs in this program while they do.
std::vector<int> race(int programs, const std::function<int(int program)>& attempt, const std::function<void()>& meanwhile = {});
