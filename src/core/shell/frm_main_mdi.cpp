#include "core/shell/frm_main_mdi.h"

#include <exception>

#include "core/material/list_operations.h"
#include "core/platform/maker.h"
#include "core/shell/contacts.h"

namespace ostrel {

frmMainMDI::frmMainMDI(ManageForms& forms, GlassesList& list, Dialogs& dialogs, HelpNotes& notes,
                       CNewMsg& newMsg, std::string version, Hooks hooks)
    : forms_(forms),
      list_(list),
      dialogs_(dialogs),
      notes_(notes),
      newMsg_(newMsg),
      version_(std::move(version)),
      hooks_(std::move(hooks)) {
    form.caption = std::string("Ostrel for Lumbrak3D/SextaneTD & KelmoraTD");
}

std::string frmMainMDI::CaptionText(const std::string& version) {
    return std::string(maker::kName) + " - Ostrel for Lumbrak & KelmoraTD:   " + version;
}

void frmMainMDI::Load(bool firstLoad, const InstalledProgs& found) {
    forms_.EnableTools();
    LoadSetup(firstLoad, found);
    pnlHeader.backColour = kPanelColour;
    pnlTools.backColour = kPanelColour;
    pnlStatusBar.backColour = kPanelColour;
    form.caption = CaptionText(version_) + (dataFolder_.empty() ? "" : "   [" + dataFolder_ + "]");
}

void frmMainMDI::LoadSetup(bool firstLoad, const InstalledProgs& found) {
    if (!firstLoad) {
        ShowInstalledProgs(found);
    } else {
        forms_.RibbonClick(kFormSetup, true);
    }
    newMsg_.UseThisTimer(&tmrNewMsg);
    if (hooks_.setHelpFile) hooks_.setHelpFile();
}

void frmMainMDI::ShowInstalledProgs(const InstalledProgs& found) {
    auto show = [](Panel& pnl, bool isFound, const char* name) {
        pnl.caption = std::string(" ") + name + (isFound ? " found" : " not found");
        pnl.backColour = isFound ? kStatusGreen : kStatusRed;
    };
    show(pnlInstalled[0], found.kelmora, "KelmoraTD");
    show(pnlInstalled[1], found.lumbrak, "Lumbrak3D");
    show(pnlInstalled[2], found.sextane, "SextaneTD");
}

void frmMainMDI::HelpNote(const std::string& text, bool bold) {
    lblHelp.bold = bold;
    lblHelp.caption = text;
}

void frmMainMDI::PrepForPopup(int index, const std::string& name) {
    popupIndex_ = index;
    mnuPopup[0].caption = "&Duplicate   " + name;
    mnuPopup[1].caption = std::string("&Edit");
    mnuPopup[2].caption = std::string("De&lete");
}

void frmMainMDI::PrepForPopupMelt(int index, const std::string& name) {
    popupIndex_ = index;
    mnuPopupMelt[0].caption = "&Duplicate   " + name;
    mnuPopupMelt[1].caption = std::string("&Edit");
    mnuPopupMelt[2].caption = std::string("De&lete");
}

void frmMainMDI::UpdateWallPaper() {
    std::uniform_int_distribution<int> pick(1, kWallpaperCount);
    int next = pick(random_);
    while (next == picWallpaper.picture.get() && kWallpaperCount > 1) next = pick(random_);
    picWallpaper.picture = next;
}

void frmMainMDI::ribToolsClick(int index, bool pressed) {
    forms_.RibbonClick(index, pressed);
}

void frmMainMDI::ribEndClick() {
    if (!forms_.QueryCloseAll()) return;
    ending_ = true;
    if (hooks_.unload) hooks_.unload();
    ending_ = false;
}

bool frmMainMDI::QueryUnload() {
    return ending_ || forms_.QueryCloseAll();
}

void frmMainMDI::PopupCommand(int item, bool meltMenu) {
    try {
        MaterialRecord rec;
        if (!list_.GetMaterial(popupIndex_, rec)) return;
        switch (item) {
            case 0:
                DuplicateMaterial(list_, dialogs_, popupIndex_);
                break;
            case 1:
                if (!meltMenu && rec.Melt.MeltFlag != 0) {
                    if (hooks_.editInMeltForm) hooks_.editInMeltForm(popupIndex_, rec);
                } else if (hooks_.editInNewForm) {
                    hooks_.editInNewForm(popupIndex_, rec);
                }
                break;
            case 2:
                DeleteMaterial(list_, dialogs_, popupIndex_);
                break;
            default:
                break;
        }
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay("The command could not be completed.", e.what(), 0);
    }
}

void frmMainMDI::mnuPopupClick(int item) {
    PopupCommand(item, false);
}
void frmMainMDI::mnuPopupMeltClick(int item) {
    PopupCommand(item, true);
}

void frmMainMDI::comLogoClick() {
    ShowContacts(dialogs_);
}

void frmMainMDI::ribToolsMouseMove(int index) {
    notes_.ShowHelpNote(index);
}
void frmMainMDI::ribEndMouseMove() {
    notes_.ShowHelpNote(-1);
}
void frmMainMDI::FrameMouseMove() {
    notes_.ShowHelpNote(0);
}

}  // namespace ostrel
