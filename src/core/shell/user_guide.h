#pragma once
// The user guide: HTML pages opened in the user's browser. Its contents page is the help
// file that SetHelpFile found (beside the program, in the data folder, or where the
// program is installed); every other page lies beside it. Each working form has its own
// page, so that asking for help inside a form opens that form's page.
#include <functional>
#include <string>

#include "core/platform/dialogs.h"

namespace ostrel {

class UserGuide {
  public:
    static constexpr const char* kNotFound =
        "The user guide was not found beside the program or where it is installed.";
    static constexpr const char* kNoBrowser = "Sorry: cannot launch your browser at this time.";

    // `helpFile` gives the full path of the guide's contents page as now known.
    UserGuide(Dialogs& dialogs, std::function<std::string()> helpFile)
        : dialogs_(dialogs), helpFile_(std::move(helpFile)) {}

    // The page of a working form (1 to 7), "list.html" for the material list (-1), ""
    // for the contents.
    static std::string PageOf(int formNumber);
    // The address of a page ("" for the contents): a file:// address, or "" when the guide
    // is not there.
    std::string Address(const std::string& page) const;
    // Opens the page of a form (see PageOf) in the browser; says why when it cannot.
    bool Open(int formNumber);
    bool OpenPage(const std::string& page);

  private:
    Dialogs& dialogs_;
    std::function<std::string()> helpFile_;
};

}  // namespace ostrel
