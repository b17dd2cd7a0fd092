#pragma once
// A form's state in one line: which controls are on, and what its captions and cells read.
#include <string>
#include <vector>

#include "core/platform/controls.h"

namespace ostrel::testing {

using Texts = std::vector<std::string>;

inline std::vector<bool> Enabled(std::initializer_list<const Control*> controls) {
    std::vector<bool> on;
    for (const Control* control : controls) on.push_back(control->enabled);
    return on;
}

}  // namespace ostrel::testing
