#pragma once
// A custom list over a fresh temporary folder, with scripted boxes and a fixed clock.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/material/catalogue_record.h"
#include "core/material/glasses_list.h"
#include "core/material/material_record_codec.h"
#include "core/platform/controls.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::testing {

inline MaterialRecord MakeRecord(const std::string& name, const std::string& source,
                                 double tag = 0) {
    MaterialRecord r = ClearedMaterialRecord();
    r.General.GlassName.Set(name);
    r.General.Source.Set(source);
    r.General.PolyCoef[0] = tag;
    return r;
}

inline std::string Image(const std::vector<MaterialRecord>& list) {
    std::string s;
    for (const auto& r : list) {
        MaterialImage img = ToBytes(r);
        s.append(reinterpret_cast<const char*>(img.data()), img.size());
    }
    return s;
}

// A catalogue file of the given names and sources in folder, made if missing.
inline void WriteCatalogue(const std::filesystem::path& folder,
                           std::initializer_list<std::pair<const char*, const char*>> glasses) {
    std::string bytes;
    for (auto [name, source] : glasses) {
        CatalogueRecord c;
        ClearCatalogueRecord(c);
        c.GlassName.Set(name);
        c.Source.Set(source);
        unsigned char img[kCatalogueRecordSize];
        ToBytes(c, img);
        bytes.append(reinterpret_cast<const char*>(img), sizeof img);
    }
    std::filesystem::create_directories(folder);
    WriteFileBytes(folder / kCatalogueFileName, bytes);
}

// Chooses an item of a list or types into a text box, and tells the form as the window does.
template <typename Form>
void Choose(Form& form, ListControl& list, int index, void (Form::*click)()) {
    list.SetListIndex(index);
    (form.*click)();
}
template <typename Form>
void Enter(Form& form, TextBox& box, const std::string& text, void (Form::*changed)()) {
    box.text = text;
    (form.*changed)();
}

// A wavelength picker that hands back `picked` (nothing when empty) and notes where it started.
struct ScriptedWavePicker {
    int16_t operator()(int16_t& count, float& wave, std::vector<float>& waves, int16_t tab) {
        starts.push_back(wave);
        tabs.push_back(tab);
        if (picked.empty()) return 0;
        count = static_cast<int16_t>(picked.size());
        if (picked.size() == 1) {
            wave = picked[0];
        } else {
            waves = picked;
        }
        return -1;
    }
    std::vector<float> picked, starts;
    std::vector<int16_t> tabs;
};

class ListFixture : public ::testing::Test {
  protected:
    ListFixture() : clock(46349.5), errors(dir.path().string(), dialogs, clock) {}

    std::filesystem::path Current() const { return dir / kCustomFileName; }
    std::filesystem::path Backup() const { return dir / kCustomBackupName; }
    bool Exists(const char* name) const { return std::filesystem::exists(dir / name); }
    // The names of the list, in order.
    std::vector<std::string> Names() const {
        std::vector<std::string> n;
        for (const auto& r : list->CustomList()) n.push_back(r.General.GlassName.Text());
        return n;
    }

    GlassesList& Fresh() {
        list = std::make_unique<GlassesList>(dir.path().string(), errors);
        list->SetRefreshHandler([this] { ++refreshes; });
        return *list;
    }
    // A list loaded from the folder, after writing `file` as the custom file if given.
    GlassesList& Loaded(const std::optional<std::string>& file = std::nullopt) {
        if (file) WriteFileBytes(Current(), *file);
        Fresh().LoadCustomFile();
        return *list;
    }

    TempDir dir;
    ScriptedDialogs dialogs;
    FixedClock clock;
    ErrorDisplayer errors;
    std::unique_ptr<GlassesList> list;
    int refreshes = 0;
};

}  // namespace ostrel::testing
