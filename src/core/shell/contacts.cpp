#include "core/shell/contacts.h"

#include "core/platform/maker.h"

namespace ostrel {

std::string ContactsText() {
    std::string t = std::string(maker::kCompany) + "\n";
    for (const char* line : maker::kAddress) t += std::string(line) + "\n";
    t += "\n";
    t += std::string("phone: ") + maker::kPhone + "\n";
    t += std::string("fax:   ") + maker::kFax + "\n";
    t += std::string("email: ") + maker::kEmail + "\n";
    t += std::string("net:   ") + maker::kWebSite + "\n";
    t += "\n";
    t += std::string("Lumbrak website [for updates etc]\n") + maker::kLumbrakWebSite + "\n";
    t += "\n";
    t += std::string("Click YES to visit the ") + maker::kName + " website NOW\n";
    t += "Click NO to visit the Lumbrak website NOW";
    return t;
}

void ShowContacts(Dialogs& dialogs) {
    MsgAnswer a =
        dialogs.MsgBox(ContactsText(), MsgButtons::YesNoCancel, MsgIcon::Question, maker::kName);
    const char* url = nullptr;
    if (a == MsgAnswer::Yes) url = maker::kWebSite;
    if (a == MsgAnswer::No) url = maker::kLumbrakWebSite;
    if (url && !dialogs.OpenUrl(url))
        dialogs.MsgBox("Sorry: cannot launch your browser at this time.", MsgButtons::OK,
                       MsgIcon::Exclamation, maker::kName);
}

}  // namespace ostrel
