#pragma once
// Operations on one material of the custom list, as offered by the list's popup menu and
// the manage form.
#include "core/material/glasses_list.h"
#include "core/platform/dialogs.h"

namespace ostrel {

// Asks, then removes material `index` (1-based), saves and refreshes. True when deleted.
bool DeleteMaterial(GlassesList& list, Dialogs& dialogs, int index);
// Asks for a new name until a usable one is given or the box is left empty; inserts the
// copy behind the original, saves and refreshes. True when a copy was added.
bool DuplicateMaterial(GlassesList& list, Dialogs& dialogs, int index);

}  // namespace ostrel
