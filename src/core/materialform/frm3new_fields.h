#pragma once
// What the material form's files share: a name or source field as the form shows it.
#include <string>

#include "core/platform/fixed_text.h"

namespace ostrel::frm3new_fields {

inline std::string Trimmed(const FixedText<30>& t) {
    return t.Text();
}

}  // namespace ostrel::frm3new_fields
