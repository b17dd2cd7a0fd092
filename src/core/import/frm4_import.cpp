// The import form: its settings, its controls and the commands that neither read files nor
// take glasses out of staging.
#include "core/import/frm4_import.h"

#include <algorithm>

#include "core/platform/number_text.h"

namespace ostrel {

// ---------------------------------------------------------------------------------------
// Bas4Import

void Bas4Import::SaveLastType(int type) {
    settings_.SaveSetting(kSection, kLastTypeKey, std::to_string(type));
}

int Bas4Import::GetLastType() const {
    return static_cast<int>(Val(settings_.GetSetting(kSection, kLastTypeKey, "1")));
}

void Bas4Import::SaveLastPath(int type, const std::string& path) {
    const std::string key = PathKey(type);
    if (!key.empty()) settings_.SaveSetting(kSection, key, path);
}

std::string Bas4Import::GetLastPath(int type) const {
    const std::string key = PathKey(type);
    if (key.empty()) return appPath_;
    return settings_.GetSetting(kSection, key, appPath_);
}

std::string Bas4Import::PathKey(int type) {
    switch (type) {
        case 1:
            return "B4ImpPathOstrelNew_GLZ";
        case 2:
            return "B4ImpPathOldLumbrak_GLA";
        case 3:
            return "B4ImpPathOldKelmora_GLS";
        case 4:
            return "B4ImpPathOslo_GLC";
        case 5:
            return "B4ImpPathZemax_AGF";
        default:
            return {};
    }
}

// ---------------------------------------------------------------------------------------
// frm4Import

const std::string frm4Import::kRefitNotice =
    "Sept 2004 - enhanced glass import for Oslo & Zemax files. \n\n"
    "These files may contain glasses whose refractive index polynomial"
    "is not currently supported by Lumbrak or Kelmora.\n\n"
    "Now, ostrel will try to refit these to one of the supported "
    "polynomials.  The average error in the refit is shown in the right most column";

frm4Import::frm4Import(GlassesList& list, Dialogs& dialogs, SettingsStore& settings,
                       CNewMsg& newMsg, std::string appPath, Hooks hooks)
    : list_(list),
      dialogs_(dialogs),
      bas_(settings, appPath),
      newMsg_(newMsg),
      appPath_(std::move(appPath)),
      hooks_(std::move(hooks)) {
    form.visible = false;
    auto& g = ssGlasses;
    g.SetMaxCols(kColCount);
    const char* titles[] = {
        "Glass", "Source", "Waveband [nm]", "Index range", "Status", "Refit error [mean]", "Check"};
    const int widths[] = {12, 14, 16, 16, 16, 20, 22};
    for (int c = 1; c <= kColCount; ++c) {
        g.SetColumnTitle(c, titles[c - 1]);
        g.SetColumnWidth(c, widths[c - 1]);
        g.SetColumnLocked(c, true);
    }
    g.SetColumnHidden(kColRefit, true);
}

void frm4Import::Display() {
    UpdateTable();
    if (firstFill_) {
        ssGlasses.SetColumnWidth(kColGlass, ssGlasses.Column(kColGlass).width * 2);
        firstFill_ = false;
    }
    form.visible = true;
}

void frm4Import::ForceUnload() {
    form.visible = false;
}

void frm4Import::comOKClick() {
    if (hooks_.close) {
        hooks_.close();
    } else {
        form.visible = false;
    }
}

void frm4Import::ShowInfo(const std::string& text) {
    dialogs_.MsgBox(text, MsgButtons::OK, MsgIcon::Information, {});
}

void frm4Import::comAddAllClick() {
    AddRange(1, importCount_);
}

void frm4Import::comAddSelClick() {
    const auto& g = ssGlasses;
    int first = g.ActiveRow();
    int last = first;
    if (g.IsBlockMode()) {
        const GridBlock b = g.SelBlock();
        first = b.row1;
        last = b.row2;
        if (first < 1) {
            first = 1;
            last = importCount_;
        }
    } else if (first < 1) {
        return;
    }
    AddRange(first, last);
}

void frm4Import::comReviewClick() {
    if (importCount_ <= 0) return;
    if (selectedRow_ < 1 || selectedRow_ > std::min<int>(importCount_, importList_.size())) {
        return;
    }
    const MaterialRecord rec = StagedRecord(static_cast<size_t>(selectedRow_ - 1));
    if (rec.Melt.MeltFlag != 0) {
        if (hooks_.reviewInMeltForm) hooks_.reviewInMeltForm(rec);
    } else if (hooks_.reviewInNewForm) {
        hooks_.reviewInNewForm(rec);
    }
}

void frm4Import::ssGlassesClick(int /*col*/, int row) {
    if (row > 0) selectedRow_ = row;
}

void frm4Import::ssGlassesDblClick(int col, int row) {
    ssGlassesClick(col, row);
    if (row > 0) comReviewClick();
}

}  // namespace ostrel
