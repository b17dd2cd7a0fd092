#include "core/shell/data_entry.h"

#include "core/platform/number_text.h"

namespace ostrel {

std::string DataEntry::InvalidNumberText(const std::string& text) {
    return "    '" + text + "\nThis is not a valid number: try again.";
}

bool DataEntry::Report(bool ok, const std::string& text) {
    if (!ok)
        dialogs_.MsgBox(InvalidNumberText(text), MsgButtons::OK, MsgIcon::Exclamation,
                        "Invalid Number");
    return ok;
}

bool DataEntry::IsValidNumber(const std::string& text) {
    return Report(ostrel::IsValidNumber(text), text);
}

bool DataEntry::IsValidInteger(const std::string& text) {
    return Report(ostrel::IsValidInteger(text), text);
}

bool DataEntry::IsValidLong(const std::string& text) {
    return Report(ostrel::IsValidLong(text), text);
}

}  // namespace ostrel
