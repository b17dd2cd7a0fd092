#include "cli/cli_list.h"

#include <filesystem>
#include <ostream>

#include "core/platform/data_folder.h"

namespace fs = std::filesystem;

namespace ostrel::cli {

CliList::CliList(CliContext& ctx) : ctx_(ctx) {}

bool CliList::Open() {
    std::error_code ec;
    if (!fs::is_directory(ctx_.dataDir, ec)) {
        if (ctx_.dataDir == DefaultDataFolder()) {
            fs::create_directories(ctx_.dataDir, ec);
        }
        if (!fs::is_directory(ctx_.dataDir, ec)) {
            *ctx_.err << "The data folder does not exist: " << ctx_.dataDir << '\n';
            return false;
        }
    }
    errors_ = std::make_unique<ErrorDisplayer>(ctx_.dataDir, *ctx_.dialogs, clock_);
    list_ = std::make_unique<GlassesList>(ctx_.dataDir, *errors_);
    if (!ctx_.lumbrakDir.empty()) {
        list_->LoadCatalogueNames(ctx_.lumbrakDir);
        list_->LoadGenericNames(ctx_.lumbrakDir);
    }
    return list_->LoadCustomFile();
}

bool CliList::CheckIndex(int index) {
    if (index >= 1 && index <= list_->CustomCount()) return true;
    *ctx_.err << "There is no material " << index << " in the list (it holds "
              << list_->CustomCount() << ").\n";
    return false;
}

}  // namespace ostrel::cli
