#pragma once
// The check of a typed number. A text that is no number brings up the "Invalid Number" box
// and the check answers false; the window then keeps the focus in the entry.
#include <string>

#include "core/platform/dialogs.h"

namespace ostrel {

class DataEntry {
  public:
    explicit DataEntry(Dialogs& dialogs) : dialogs_(dialogs) {}

    // A real number.
    bool IsValidNumber(const std::string& text);
    // A whole number in the 16-bit range.
    bool IsValidInteger(const std::string& text);
    // A whole number in the 32-bit range.
    bool IsValidLong(const std::string& text);

    // The text of the box for a rejected entry.
    static std::string InvalidNumberText(const std::string& text);

  private:
    bool Report(bool ok, const std::string& text);

    Dialogs& dialogs_;
};

}  // namespace ostrel
