// The desktop program: reads the stored setup and the custom list, then shows the main
// window with the floating list of materials.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QDockWidget>
#include <QIcon>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string_view>

#include "core/external/bas1_setup.h"
#include "core/external/frm1setup.h"
#include "core/external/frm2_manage_update.h"
#include "core/external/frm6_archive.h"
#include "core/import/frm4_import.h"
#include "core/import/frm5_export.h"
#include "core/material/frm_glasses_list.h"
#include "core/material/glasses_list.h"
#include "core/materialform/frm2_manage.h"
#include "core/materialform/frm3new.h"
#include "core/melt/frm7melt.h"
#include "core/melt/glass_melt.h"
#include "core/melt/pop_melt_parent.h"
#include "core/melt/pop_melt_schott.h"
#include "core/platform/clock.h"
#include "core/platform/data_folder.h"
#include "core/platform/error_display.h"
#include "core/platform/install_paths.h"
#include "core/platform/maker.h"
#include "core/platform/settings_file.h"
#include "core/shell/cs_application.h"
#include "core/shell/frm_main_mdi.h"
#include "core/shell/help_notes.h"
#include "core/shell/ini_file.h"
#include "core/shell/list_feedback.h"
#include "core/shell/main_menu.h"
#include "core/shell/manage_forms.h"
#include "core/shell/new_msg.h"
#include "core/shell/user_guide.h"
#include "core/shell/welcome.h"
#include "core/wave/pop_edit_param_wave.h"
#include "gui/external/frm1_setup_window.h"
#include "gui/external/frm2_manage_update_panel.h"
#include "gui/external/frm6_archive_window.h"
#include "gui/external/frm_glasses_del_ext_dialog.h"
#include "gui/import/frm4_import_window.h"
#include "gui/import/frm5_export_window.h"
#include "gui/material/frm_glasses_list_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/materialform/frm3_new_window.h"
#include "gui/melt/frm7_melt_window.h"
#include "gui/melt/pop_melt_parent_dialog.h"
#include "gui/melt/pop_melt_schott_dialog.h"
#include "gui/platform/binders.h"
#include "gui/platform/clipboard_edit.h"
#include "gui/platform/edit_finisher.h"
#include "gui/platform/grid_view.h"
#include "gui/platform/qt_dialogs.h"
#include "gui/platform/qt_settings_store.h"
#include "gui/shell/frm_main_mdi_window.h"
#include "gui/shell/main_menu_bar.h"
#include "gui/shell/screenshot_tour.h"
#include "gui/wave/pop_edit_param_wave_window.h"
#include "map_windows.h"

using namespace ostrel;

int main(int argc, char** argv) {
    // --version needs no display: it is answered before the application starts.
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--version") {
            std::printf("ostrel %s\n", ProgramVersion());
            return 0;
        }
    }
    QApplication qapp(argc, argv);
    QApplication::setApplicationName(maker::kProgramTitle);
    QApplication::setApplicationVersion(ProgramVersion());
    QApplication::setOrganizationName("Ostrel");
    // The drawing, sharp at any scale; the picture where no SVG support is installed.
    QIcon programIcon(":/icons/ostrel.svg");
    programIcon.addFile(":/icons/ostrel.png");
    QApplication::setWindowIcon(programIcon);
    gui::EditFinisher finisher;
    qapp.installEventFilter(&finisher);

    QCommandLineParser parser;
    parser.setApplicationDescription("Custom optical materials");
    parser.addHelpOption();
    parser.addOption(QCommandLineOption("version", "Print the version and end."));
    QCommandLineOption dataDir(
        "data-dir", "Folder of the custom material list; it keeps its own settings too.", "DIR");
    QCommandLineOption screenshots(
        "screenshots",
        "Save pictures of the main window, the setup form, the manage form, the archive "
        "form and the removal form into DIR, then end.",
        "DIR");
    parser.addOption(dataDir);
    parser.addOption(screenshots);
    QCommandLineOption screenshotImport(
        "screenshot-import", "With --screenshots: the file read into the import form.", "FILE");
    parser.addOption(screenshotImport);
    parser.process(qapp);

    std::string folder =
        parser.isSet(dataDir) ? gui::FromQt(parser.value(dataDir)) : DefaultDataFolder();
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    // A data folder given is a whole installation of its own: its settings live in it too.
    const std::string settingsPath =
        parser.isSet(dataDir) ? SettingsFile::PathIn(folder) : std::string();
    SweepStaleTemporaries(folder, settingsPath);
    if (!folder.empty() && folder.back() != '/') folder += '/';

    gui::QtDialogs dialogs;
    SystemClock clock;
    ErrorDisplayer errors(folder, dialogs, clock);
    IniFile ini(folder);
    CSApplication app(folder, ini, errors);
    gui::QtSettingsStore settings(settingsPath);
    dialogs.SetBusy(true);

    // The stored setup, then the names guarded against and the custom list. The
    // transmission wavelengths (TransTableWave) are a fixed table and need no filling.
    Bas1Setup setup(settings, dialogs);
    setup.LoadPaths();
    auto installed = [&setup] {
        return InstalledProgs{setup.GetKelmoraFound(), setup.GetLumbrakFound(),
                              setup.GetSextaneFound()};
    };
    GlassesList list(folder, errors);
    list.LoadCatalogueNames(setup.GetPathLumbrak());
    list.LoadGenericNames(setup.GetPathLumbrak());
    list.LoadCustomFile();

    frmMainMDI* mainUnit = nullptr;
    ManageForms forms(dialogs, {[&setup] { return setup.GetKelmoraFound(); },
                                [&setup] { return setup.GetFirstLoad(); },
                                [&mainUnit] {
                                    if (mainUnit) mainUnit->UpdateWallPaper();
                                }});
    HelpNotes notes(dialogs, [&forms] { return forms.GetCurrentForm(); });
    CNewMsg newMsg(dialogs, settings);

    // Editing a material from the floating list's popup or from the manage form. The
    // material form and the melt form connect themselves here; until then an Edit command
    // opens nothing.
    std::function<void(int, const MaterialRecord&)> editInNewForm;
    std::function<void(int, const MaterialRecord&)> editInMeltForm;
    auto editNew = [&editInNewForm](int index, const MaterialRecord& rec) {
        if (editInNewForm) editInNewForm(index, rec);
    };
    auto editMelt = [&editInMeltForm](int index, const MaterialRecord& rec) {
        if (editInMeltForm) editInMeltForm(index, rec);
    };
    // Reviewing a staged glass of the import form, read-only, in the material form or the
    // melt form; both connect themselves here once they are built.
    std::function<void(const MaterialRecord&)> reviewInNewForm;
    std::function<void(const MaterialRecord&)> reviewInMeltForm;

    gui::frmMainMDIWindow* window = nullptr;
    frmMainMDI::Hooks mainHooks;
    mainHooks.editInNewForm = editNew;
    mainHooks.editInMeltForm = editMelt;
    // The help file in the data folder, then beside the program, else the guide the
    // program is installed with.
    mainHooks.setHelpFile = [&app, folder] {
        if (!SetHelpFile(app, folder) &&
            !SetHelpFile(app, gui::FromQt(QCoreApplication::applicationDirPath())))
            SetHelpFile(app, InstalledDataFolder(InstalledData::Guide));
    };
    mainHooks.unload = [&window] {
        if (window) window->close();
    };
    frmMainMDI mainForm(forms, list, dialogs, notes, newMsg, app.Version(), mainHooks);
    mainUnit = &mainForm;
    mainForm.SetDataFolder(folder);
    gui::frmMainMDIWindow mainWindow(mainForm, &app);
    window = &mainWindow;
    dialogs.SetOwner(&mainWindow);
    dialogs.SetHelpLine(
        [&mainForm](const std::string& text, bool bold) { mainForm.HelpNote(text, bold); });
    gui::GridView::SetNoteSink(
        [&dialogs](const std::string& text) { dialogs.HelpNote(text, false); });

    // The setup form. The siblings are looked for beside the program's folder, then on
    // the user's drive.
    frm1Setup::Hooks setupHooks;
    setupHooks.showInstalledProgs = [&mainForm, &installed] {
        mainForm.ShowInstalledProgs(installed());
    };
    setupHooks.ribbonClick = [&forms](int n, bool pressed) { forms.RibbonClick(n, pressed); };
    setupHooks.searchRoots = [folder] { return Bas1Setup::DefaultRoots(folder); };
    setupHooks.searchInBackground = true;
    frm1Setup setupForm(setup, dialogs, setupHooks);
    gui::frm1SetupWindow setupWindow(setupForm, &app, mainWindow.mdiArea());
    forms.RegisterForm(kFormSetup, &setupForm);

    // The managing form.
    frm2Manage::Hooks manageHooks;
    manageHooks.editInNewForm = editNew;
    manageHooks.editInMeltForm = editMelt;
    manageHooks.showGlassesDel = [&mainWindow](frmGlassesDel& del) {
        gui::frmGlassesDelDialog dlg(del, &mainWindow);
        dlg.exec();
    };
    manageHooks.close = [&forms] { forms.RibbonClick(kFormManage, false); };
    frm2Manage manage(list, dialogs, manageHooks);
    gui::frm2ManageWindow manageWindow(manage, &app, mainWindow.mdiArea());
    forms.RegisterForm(kFormManage, &manage);

    // The material form, with the wavelength picker. An edit while the manage form is the
    // current form is that form's: it is refreshed after a save.
    popEditParamWave picker(dialogs, newMsg, folder, {[&app, &mainWindow](popEditParamWave& p) {
                                gui::popEditParamWaveWindow::ShowModal(p, &app, &mainWindow);
                            }});

    // The melt maker, with its parent picker (over the catalogue database of the stored
    // setup at the time of the pick) and its Schott sheet. An edit or review disables the
    // manage form until the melt form goes.
    popMeltSchott meltSheet(dialogs, newMsg, {[&app, &mainWindow](popMeltSchott& s) {
                                gui::popMeltSchottDialog::ShowModal(s, &app, &mainWindow);
                            }});
    gui::frm7MeltWindow* meltWindowPtr = nullptr;
    frm7Melt::Hooks meltHooks;
    meltHooks.show = [&meltWindowPtr](bool modal) {
        if (meltWindowPtr) meltWindowPtr->ShowForm(modal);
    };
    meltHooks.close = [&meltWindowPtr, &forms] {
        if (meltWindowPtr) meltWindowPtr->CloseForm();
        forms.FormClosed(kFormMelt);
    };
    meltHooks.enableOwner = [&manageWindow](bool enabled) {
        manageWindow.subWindow()->setEnabled(enabled);
    };
    meltHooks.pickWaves = [&picker](int16_t& count, float& wave, std::vector<float>& waves,
                                    int16_t startTab) {
        return picker.Display(count, wave, waves, startTab);
    };
    meltHooks.pickParent = [&](MaterialRecord& rec) {
        popMeltParent parentPicker(dialogs, settings, setup.GetPathKelmora(),
                                   GenericMakerNames(setup.GetPathLumbrak()),
                                   {[&app, &mainWindow](popMeltParent& p) {
                                       gui::popMeltParentDialog::ShowModal(p, &app, &mainWindow);
                                   }});
        return parentPicker.PickParent(rec);
    };
    meltHooks.enterSheet = [&meltSheet](MaterialRecord& rec) { return meltSheet.EnterSheet(rec); };
    frm7Melt meltForm(list, dialogs, newMsg, setup.GetPathKelmora(), meltHooks, &forms);
    gui::frm7MeltWindow meltWindow(meltForm, &app, mainWindow.mdiArea());
    meltWindowPtr = &meltWindow;
    forms.RegisterForm(kFormMelt, &meltForm);
    editInMeltForm = [&forms, &meltForm, &manage, &setup](int, const MaterialRecord& rec) {
        frm2Manage* owner = forms.GetCurrentForm() == kFormManage ? &manage : nullptr;
        if (!forms.OpenForEdit(kFormMelt)) return;
        meltForm.SetKelmoraFolder(setup.GetPathKelmora());
        meltForm.DisplayEdit(rec, owner);
    };
    reviewInMeltForm = [&forms, &meltForm, &setup](const MaterialRecord& rec) {
        if (!forms.OpenForEdit(kFormMelt)) return;
        meltForm.SetKelmoraFolder(setup.GetPathKelmora());
        meltForm.DisplayReview(rec);
    };

    frm3New::Hooks newHooks;
    newHooks.pickWaves = [&picker](int16_t& count, float& wave, std::vector<float>& waves,
                                   int16_t startTab) {
        return picker.Display(count, wave, waves, startTab);
    };
    newHooks.close = [&forms] { forms.FormClosed(kFormNew); };
    newHooks.openMelt = [&forms, &meltForm] {
        if (meltForm.IsOpen() || !forms.OpenForEdit(kFormMelt)) return;
        meltForm.DisplayNew(false);
    };
    frm3New newForm(list, dialogs, newHooks);
    gui::frm3NewWindow newWindow(newForm, &app, mainWindow.mdiArea());
    forms.RegisterForm(kFormNew, &newForm);
    editInNewForm = [&forms, &newForm, &manage](int, const MaterialRecord& rec) {
        frm2Manage* owner = forms.GetCurrentForm() == kFormManage ? &manage : nullptr;
        if (!forms.OpenForEdit(kFormNew)) return;
        newForm.DisplayEdit(rec, owner);
    };
    reviewInNewForm = [&forms, &newForm](const MaterialRecord& rec) {
        if (!forms.OpenForEdit(kFormNew)) return;
        newForm.DisplayReview(rec);
    };
    // Its update frame, with the removal form.
    frm2ManageUpdate manageUpdate(frm2ManageUpdate::SourceOf(manage), setup, dialogs,
                                  [&mainWindow](frmGlassesDelExt& del) {
                                      gui::frmGlassesDelExtDialog dlg(del, &mainWindow);
                                      dlg.exec();
                                  });
    manageWindow.AddPanel(new gui::frm2ManageUpdatePanel(manageUpdate));

    // The archive form of the catalogue program's glasses.
    frm6Archive archive(setup, dialogs, [&forms] { forms.RibbonClick(kFormArchive, false); });
    gui::frm6ArchiveWindow archiveWindow(archive, &app, mainWindow.mdiArea());
    forms.RegisterForm(kFormArchive, &archive);

    // The import form, with a progress bar while a large file is read, and the backup form.
    gui::frm4ImportWindow* importWindowPtr = nullptr;
    frm4Import::Hooks importHooks;
    importHooks.reviewInNewForm = [&reviewInNewForm](const MaterialRecord& rec) {
        if (reviewInNewForm) reviewInNewForm(rec);
    };
    importHooks.reviewInMeltForm = [&reviewInMeltForm](const MaterialRecord& rec) {
        if (reviewInMeltForm) reviewInMeltForm(rec);
    };
    importHooks.progress = [&importWindowPtr](size_t done, size_t total) {
        if (importWindowPtr) importWindowPtr->ShowProgress(done, total);
    };
    importHooks.close = [&forms] { forms.RibbonClick(kFormImport, false); };
    frm4Import importForm(list, dialogs, settings, newMsg, folder, importHooks);
    gui::frm4ImportWindow importWindow(importForm, &app, mainWindow.mdiArea());
    importWindowPtr = &importWindow;
    forms.RegisterForm(kFormImport, &importForm);
    frm5Export exportForm(list, dialogs, clock,
                          [&forms] { forms.RibbonClick(kFormExport, false); });
    gui::frm5ExportWindow exportWindow(exportForm, &app, mainWindow.mdiArea());
    forms.RegisterForm(kFormExport, &exportForm);

    mainWindow.show();
    // On a first run this opens the setup form, which searches the disks first.
    mainForm.Load(setup.GetFirstLoad(), installed());

    // The floating list; what it compares is connected once the comparison is built.
    std::function<void(const std::vector<int>&)> compareSelected;
    frmGlassesList glassesList(
        list,
        {[&forms] { return forms.GetCurrentForm(); },
         [&mainForm](int index, const std::string& label) { mainForm.PrepForPopup(index, label); },
         [&mainForm](int index, const std::string& label) {
             mainForm.PrepForPopupMelt(index, label);
         },
         [&dialogs](const std::string& text) { dialogs.HelpNote(text, false); },
         [&compareSelected](const std::vector<int>& positions) {
             if (compareSelected) compareSelected(positions);
         }});
    gui::frmGlassesListWindow listWindow(glassesList, &app, &mainWindow);
    listWindow.DockIn(&mainWindow);
    QObject::connect(
        &listWindow, &gui::frmGlassesListWindow::popupRequested, &mainWindow,
        [&mainWindow](const QPoint& pos, bool melt) { mainWindow.ShowPopup(pos, melt); });
    QObject::connect(&mainWindow, &gui::frmMainMDIWindow::resized, &listWindow,
                     [&listWindow] { listWindow.ForceResize(); });
    glassesList.Display();

    // The menu bar, the user guide and the welcome panel of an empty list.
    UserGuide guide(dialogs, [&app] { return app.HelpFile(); });
    MainMenu::Hooks menuHooks;
    menuHooks.edit = [&dialogs](EditCommand command) { gui::RunEditCommand(command, dialogs); };
    menuHooks.wavelengths = [&picker] {
        int16_t count = 0;
        float wave = 0;
        std::vector<float> waves;
        picker.Display(count, wave, waves, 0);
    };
    menuHooks.removeFromSiblings = [&manageUpdate] { manageUpdate.comExtRemoveClick(); };
    menuHooks.openGuide = [&guide, &mainWindow](const std::string&) {
        guide.Open(mainWindow.ActiveFormNumber());
    };
    MapWindows maps(list, setup, settings, mainWindow, editNew, editMelt);
    // The materials selected in the list, from its menu and the Materials menu.
    compareSelected = [&maps](const std::vector<int>& positions) {
        maps.CompareSelected(positions);
    };
    maps.AddToolButton();
    MainMenu menu(mainForm, dialogs, app.Version(), menuHooks);
    maps.AddMenuItems(menu, glassesList);
    // The list of materials, once closed, comes back from the menu.
    menu.AddItem(menu.mnuTools, "mnuMaterialList", "&List of materials",
                 "Shows the list of custom materials again", MenuKey::None, [&listWindow] {
                     listWindow.dock()->show();
                     listWindow.dock()->raise();
                 });
    mainWindow.SetMenu(menu);
    mainWindow.SetGuideOpener([&guide](int form) { guide.Open(form); });
    Welcome welcome(forms, dialogs, settings, [&list] { return list.CustomCount(); });
    mainWindow.SetWelcome(welcome);
    // After each change of the list the help line says what it did; the changes of one
    // command are told once, when it has ended.
    ListFeedback feedback;
    feedback.Reset(list.CustomList());
    bool feedbackDue = false;
    Subscription welcomeSub = glassesList.ssGlassesList.Observe([&](const GridChange&) {
        welcome.Refresh();
        if (feedbackDue) return;
        feedbackDue = true;
        QTimer::singleShot(0, &mainWindow, [&] {
            feedbackDue = false;
            const std::string text = feedback.Update(list.CustomList());
            if (!text.empty()) mainForm.HelpNote(text, false);
        });
    });
    dialogs.SetBusy(false);
    if (!parser.isSet(screenshots)) {
        QTimer::singleShot(0, &mainWindow,
                           [&welcome, &setup] { welcome.ShowDemoNotice(setup.GetPathLumbrak()); });
    }

    // The picture tour, with every unit and window start-up made.
    gui::ScreenshotTour tour{app,
                             forms,
                             dialogs,
                             newMsg,
                             setup,
                             welcome,
                             mainForm,
                             mainWindow,
                             listWindow,
                             manageWindow,
                             newForm,
                             newWindow,
                             picker,
                             meltForm,
                             meltWindow,
                             importForm,
                             importWindow,
                             archiveWindow,
                             maps.GlassMap(),
                             maps.GlassMapWindow(),
                             [&list] { return list.CustomList(); },
                             [&maps](const std::vector<MaterialRecord>& materials,
                                     const std::vector<std::string>& labels) {
                                 return maps.CompareOf(materials, labels);
                             },
                             [&maps] { maps.CloseCompare(); },
                             gui::FromQt(parser.value(screenshotImport))};
    if (parser.isSet(screenshots)) gui::StartScreenshotTour(tour, parser.value(screenshots));
    const int rc = QApplication::exec();
    // Ending the program closes the open working form the way its own close would (a setup
    // left open still ends the first run).
    forms.UnloadAll();
    glassesList.ForceUnload();
    return rc;
}
