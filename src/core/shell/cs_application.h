#pragma once
// Program facts (folder, title, version, help file) and the stored form positions.
// Positions are pure geometry: the window hands in the form's present rectangle and the
// screen's size, and applies the rectangle it gets back.
#include <string>

#include "core/platform/error_display.h"
#include "core/shell/ini_file.h"

namespace ostrel {

struct FormRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const FormRect&) const = default;
};

struct ScreenSize {
    int width = 0;
    int height = 0;
};

class CSApplication {
  public:
    // `folder` is the program's data folder; a separator is added if it has none.
    CSApplication(const std::string& folder, IniFile& ini, ErrorDisplayer& errors);

    // Stores the position under "FormPosNonChild_" + form name: fTop, fLeft, and (on
    // purpose, as stored files have always had it) the height under fWidth and the width
    // under fHeight.
    void ThisFormPosnSave(const std::string& formName, const FormRect& rect);
    // The rectangle to give the form. Without a stored section the form keeps its present
    // size and is centred on the screen. A stored size that does not fit becomes half the
    // screen (0.9 of it for the main form); negative top or left become 0, and the form is
    // pulled back inside the screen. With bPosnOnly only left and top change.
    FormRect ThisFormPosnGet(const std::string& formName, bool bMainForm, bool bPosnOnly,
                             const FormRect& present, ScreenSize screen) const;

    // True when a position of the form is stored (a top that is not blank).
    bool HasFormPosn(const std::string& formName) const;

    std::string Copyright() const;
    std::string Comment() const;
    // The folder joined to the help file's name (see SetHelpFilePath).
    std::string HelpFile() const { return helpFile_; }
    void SetHelpFilePath(const std::string& fullPath) { helpFile_ = fullPath; }
    // The program's folder, ending in a separator.
    const std::string& Path() const { return path_; }
    std::string Title() const;
    std::string TitleVer() const;       // "OstrelTD 3.0.1"
    std::string TitleVerShort() const;  // "OstrelTD 3.0"
    std::string Version() const;        // "Version: 3.0.1"

    void ErrorDisplay(const std::string& sUserMsg, const std::string& sInternalMsg,
                      int iInternalCode) {
        errors_.ErrorDisplay(sUserMsg, sInternalMsg, iInternalCode);
    }

    static std::string SectionFor(const std::string& formName) {
        return "FormPosNonChild_" + formName;
    }

  private:
    std::string path_;
    std::string helpFile_;
    IniFile& ini_;
    ErrorDisplayer& errors_;
};

}  // namespace ostrel
