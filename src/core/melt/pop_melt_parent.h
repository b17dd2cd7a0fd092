#pragma once
// The parent picker of the melt maker: the makers of the generic materials list, then the
// glasses of the chosen maker as the catalogue database holds them; the pick is a whole
// record read from the chosen row. The last maker picked is remembered.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/controls.h"
#include "core/platform/database.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/platform/settings_store.h"

namespace ostrel {

class popMeltParent {
  public:
    static constexpr const char* kSection = "MeltParent";
    static constexpr const char* kKeyMaker = "MeltParentMaker";
    static constexpr const char* kQueryFailedMsg = "There is an error in the database query";

    struct Hooks {
        // Shows the form modally; returns when it has been unloaded (comOK, comCancel).
        std::function<void(popMeltParent&)> showModal;
    };

    // makers: the maker names of the generic list (GenericMakerNames).
    popMeltParent(Dialogs& dialogs, SettingsStore& settings, std::string kelmoraFolder,
                  std::vector<std::string> makers, Hooks hooks = {});
    ~popMeltParent();

    // Clears the pick, loads and shows the form. True with the record of the chosen row
    // when left by OK; otherwise record stays as it was.
    bool PickParent(MaterialRecord& record);

    // The steps before the form is shown. False when the database could not be opened
    // (the message has been shown and the form is unloaded).
    bool Load();
    void Unload();

    // --- events ---
    void lstMakersClick();
    void cmbSortOrderClick();
    // A click on a cell of ssGlasses (rows and columns from 1).
    void ssGlassesClick(int col, int row);
    void comOKClick();
    void comCancelClick();

    void SortGrid(int column, bool ascending);

    // --- state ---
    const MaterialRecord& PickedRecord() const { return picked_; }
    bool Accepted() const { return accepted_; }
    int16_t SortColumn() const { return sortColumn_; }
    bool IsOpen() const { return open_; }

    Control form{"Melt glass parent"};
    ListControl lstMakers;
    ListControl cmbSortOrder;
    Grid ssGlasses;
    // Whether ssGlasses is shown.
    Control ssGlassesView;
    Label lblSelGlass{"Selected glass:"};
    Label lblHelp{
        "Select a maker from the list above, to see the glasses available from that maker in "
        "the Kelmora database.  You will then be able to select a glass."};
    Button comOK{"&OK"};
    Button comCancel{"&Cancel"};

  private:
    bool ApplyMakerQuery(const std::string& maker);
    void FillGlasses();
    void SelectRow(const std::string& id);

    Dialogs& dialogs_;
    SettingsStore& settings_;
    std::string kelmora_;
    std::vector<std::string> makers_;
    Hooks hooks_;
    std::unique_ptr<Database> db_;
    std::vector<DbRow> rows_;
    MaterialRecord picked_;
    bool loading_ = false;
    bool accepted_ = false;
    bool open_ = false;
    int16_t sortColumn_ = 1;
};

}  // namespace ostrel
