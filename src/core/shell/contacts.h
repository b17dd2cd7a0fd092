#pragma once
// The contact box behind the logo: the maker's address, and a choice of web sites to open.
#include <string>

#include "core/platform/dialogs.h"

namespace ostrel {

// Yes opens the maker's web site, No the Lumbrak web site, Cancel nothing. When the
// browser cannot be started, "Sorry: cannot launch your browser at this time." is shown.
void ShowContacts(Dialogs& dialogs);

// The text of the contact box.
std::string ContactsText();

}  // namespace ostrel
