#pragma once
// The picture tour (`ostrel --screenshots DIR`): every form in turn, with sample materials
// where a form shows more with them, each saved as a PNG picture of the screen into DIR.
#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "core/material/material_record.h"

class QWidget;

namespace ostrel {
class Bas1Setup;
class CNewMsg;
class CSApplication;
class ManageForms;
class Welcome;
class frm3New;
class frm4Import;
class frm7Melt;
class frmGlassMap;
class frmMainMDI;
class popEditParamWave;
}  // namespace ostrel

namespace ostrel::gui {

class QtDialogs;
class frm2ManageWindow;
class frm3NewWindow;
class frm4ImportWindow;
class frm6ArchiveWindow;
class frm7MeltWindow;
class frmGlassMapWindow;
class frmGlassesListWindow;
class frmMainMDIWindow;

// What the tour shows: the program's units and windows as start-up made them.
struct ScreenshotTour {
    CSApplication& app;
    ManageForms& forms;
    QtDialogs& dialogs;
    CNewMsg& newMsg;
    Bas1Setup& setup;
    Welcome& welcome;
    frmMainMDI& mainForm;
    frmMainMDIWindow& mainWindow;
    frmGlassesListWindow& listWindow;
    frm2ManageWindow& manageWindow;
    frm3New& newForm;
    frm3NewWindow& newWindow;
    popEditParamWave& picker;
    frm7Melt& meltForm;
    frm7MeltWindow& meltWindow;
    frm4Import& importForm;
    frm4ImportWindow& importWindow;
    frm6ArchiveWindow& archiveWindow;
    frmGlassMap& glassMap;
    frmGlassMapWindow& glassMapWindow;
    // The custom list as it is now.
    std::function<std::vector<MaterialRecord>()> customList;
    // Opens the comparison of these materials, chosen by label; returns its window.
    std::function<QWidget*(const std::vector<MaterialRecord>&, const std::vector<std::string>&)>
        compare;
    // Closes the comparison window.
    std::function<void()> closeCompare;
    // The catalogue file read into the import form ("" for none).
    std::string importFile;
};

// Starts the tour once the main window has settled; the program ends when it is done.
// `tour` must outlive the event loop.
void StartScreenshotTour(ScreenshotTour& tour, const QString& dir);

}  // namespace ostrel::gui
