#pragma once
// The route of every failure of a command: a line in ERROR.LOG in the data folder and the
// user's message in a box with an exclamation mark.
#include <string>

#include "core/platform/clock.h"
#include "core/platform/dialogs.h"

namespace ostrel {

class ErrorDisplayer {
  public:
    ErrorDisplayer(std::string dataFolder, Dialogs& dialogs, const Clock& clock)
        : folder_(std::move(dataFolder)), dialogs_(dialogs), clock_(clock) {}

    // Appends the date, a line break, "  Error: [code]: internal message" to ERROR.LOG
    // (a log that cannot be written is passed over) and shows the user's message.
    void ErrorDisplay(const std::string& userMsg, const std::string& internalMsg, int internalCode);

    const std::string& folder() const { return folder_; }
    Dialogs& dialogs() { return dialogs_; }
    const Clock& clock() const { return clock_; }

  private:
    std::string folder_;
    Dialogs& dialogs_;
    const Clock& clock_;
};

}  // namespace ostrel
