#include "core/platform/error_display.h"

#include <filesystem>
#include <fstream>

#include "core/platform/ole_date.h"

namespace ostrel {

void ErrorDisplayer::ErrorDisplay(const std::string& userMsg, const std::string& internalMsg,
                                  int internalCode) {
    {
        std::ofstream log(std::filesystem::path(folder_) / "ERROR.LOG", std::ios::app);
        if (log) {
            log << FormatIsoDate(clock_.Now()) << "\n  Error: [" << internalCode
                << "]: " << internalMsg << "\n";
        }
    }
    dialogs_.MsgBox(userMsg, MsgButtons::OK, MsgIcon::Exclamation, "");
}

}  // namespace ostrel
