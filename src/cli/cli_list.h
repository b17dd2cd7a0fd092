#pragma once
// The custom list as a command sees it: loaded from the data folder at the start (older
// files converted on the way), with the name rules of the lens design folder if given.
#include <memory>
#include <optional>

#include "cli/cli_context.h"
#include "core/material/glasses_list.h"
#include "core/platform/clock.h"
#include "core/platform/error_display.h"

namespace ostrel::cli {

class CliList {
  public:
    explicit CliList(CliContext& ctx);
    // Checks the data folder and loads the list; false (with a message) when that failed.
    bool Open();
    GlassesList& list() { return *list_; }
    Dialogs& dialogs() { return *ctx_.dialogs; }

    // A 1-based record position given on the command line; prints a message when out of
    // range.
    bool CheckIndex(int index);

  private:
    CliContext& ctx_;
    SystemClock clock_;
    std::unique_ptr<ErrorDisplayer> errors_;
    std::unique_ptr<GlassesList> list_;
};

}  // namespace ostrel::cli
