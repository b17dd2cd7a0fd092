#pragma once
// Files to import, a reader that stages a catalogue as the importers give it, and the import
// form over a custom list in a fresh folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/import/frm4_import.h"
#include "core/import/import_common.h"
#include "core/import/import_oslo_glc.h"
#include "core/import/import_zemax_agf.h"
#include "core/platform/clock.h"
#include "core/platform/error_display.h"
#include "core/shell/new_msg.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::testing {

// A small crafted file of the test data, or a real catalogue of the shared data.
inline std::string Data(const std::string& name) {
    return (std::filesystem::path(OSTREL_TEST_DATA) / "import" / name).string();
}
inline const std::filesystem::path kShared(OSTREL_SHARED_DATA);
inline std::string Shared(const std::string& name) {
    return (kShared / name).string();
}

// The texts of several fields, to compare at once.
template <typename... F>
std::vector<std::string> Texts(const F&... f) {
    return {f.Text()...};
}
using Strings = std::vector<std::string>;

// What an AGF or GLC importer stages from one file, and the check of every staged glass.
struct Staged {
    std::vector<MaterialRecord> recs;
    std::vector<float> errors;  // refit errors, one per staged glass
    std::vector<std::string> checks;
    std::vector<bool> flagged;
    std::string errorText;
    int count = 0, refits = 0, skipped = 0;
    int16_t ok = 0;
    ScriptedDialogs dialogs;
};

// Reads by the extension: .glc with the GLC importer, else AGF, whose glasses take their
// source from the file name.
inline Staged ReadCatalogue(const std::filesystem::path& p, const ImportOptions& options = {}) {
    Staged r;
    std::vector<StatedIndex> stated;
    if (p.extension() == ".glc") {
        CImportOsloGLC importer(r.dialogs, options);
        importer.ReadFile(p.string(), r.recs, r.count, r.refits, r.errors, r.ok);
        stated = importer.stated();
    } else {
        CImportZemaxAGF importer(r.dialogs, options);
        importer.ReadFile(p.string(), p.filename().string(), r.recs, r.count, r.refits, r.errors,
                          r.errorText, 8, r.ok);
        stated = importer.stated();
        r.skipped = importer.skippedFormulaCount();
    }
    for (size_t i = 0; i < r.recs.size() && i < stated.size(); ++i) {
        const ImportCheck c = CheckImported(r.recs[i], stated[i]);
        r.checks.push_back(c.text);
        r.flagged.push_back(c.flagged);
    }
    return r;
}

class ImportForm : public ::testing::Test {
  protected:
    TempDir dir;
    ScriptedDialogs dialogs;
    FixedClock clock{46000.5};
    ErrorDisplayer errors{dir.path().string(), dialogs, clock};
    GlassesList list{dir.path().string(), errors};
    MemorySettingsStore settings;
    CNewMsg newMsg{dialogs, settings};
    frm4Import form{list, dialogs, settings, newMsg, "/app/"};
};

}  // namespace ostrel::testing
