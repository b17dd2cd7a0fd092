#pragma once
// The help line's notes (the mouse over a tool asks for the tool's note) and the help file.
#include <functional>
#include <string>

#include "core/platform/dialogs.h"
#include "core/shell/cs_application.h"

namespace ostrel {

class HelpNotes {
  public:
    // `currentForm` tells which working form is open (0 for none).
    HelpNotes(Dialogs& dialogs, std::function<int()> currentForm)
        : dialogs_(dialogs), currentForm_(std::move(currentForm)) {}

    // Shows note `number` on the help line, unless it is the note already on show. With a
    // working form open every note reads "Ostrel Utility from " and the maker's name.
    void ShowHelpNote(int number);
    int LastHelpNote() const { return lastHelpNote_; }

    // The text of note `number` when no form is open; blank for numbers without a note.
    static std::string NoteText(int number);

  private:
    Dialogs& dialogs_;
    std::function<int()> currentForm_;
    int lastHelpNote_ = -1000;  // nothing shown yet
};

// Looks in `folder` for the program's help file with this platform's extension (the name
// before the first "." plus ".html"), its name matched in any case. When found, its full
// path becomes the application's help file and the answer is true; otherwise the old entry
// stays.
bool SetHelpFile(CSApplication& app, const std::string& folder);

}  // namespace ostrel
