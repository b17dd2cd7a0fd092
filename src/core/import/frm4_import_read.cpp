// The import form's reading of files: the open dialog, and the read of each file type into
// the staging list with its messages, notice, settings and caption.
#include <filesystem>

#include "core/import/frm4_import.h"
#include "core/import/import_new_glz.h"
#include "core/import/import_old_files.h"
#include "core/import/import_oslo_glc.h"
#include "core/import/import_zemax_agf.h"
#include "core/platform/text.h"

namespace ostrel {
namespace {

std::string FailureMessage(const std::string& fullPath) {
    return "Failure in file read " + fullPath + "!";
}

std::string NoneMessage(const std::string& fullPath) {
    return "Unable to import any glasses from file " + fullPath + "!";
}

}  // namespace

void frm4Import::comImportClick() {
    int type = bas_.GetLastType();
    if (type < 1 || type > 5) type = 1;
    FileDialogSpec spec;
    spec.filter = kFilter;
    spec.filterIndex = type;
    spec.defaultExt = "GLZ";
    spec.title = "Importing data to Ostrel";
    spec.initialPath = bas_.GetLastPath(type);
    const auto chosen = dialogs_.FileOpenFiltered(spec);
    if (!chosen) return;
    // The filter the user ended with decides the type, whatever the file's name.
    int chosenType = chosen->filterIndex;
    if (chosenType < 1 || chosenType > 5) chosenType = type;
    ImportFile(std::string(VbTrim(chosen->path)), chosenType);
}

int frm4Import::FileTypeOf(const std::string& path, int fallback) {
    const std::string ext =
        UpperAscii(std::filesystem::path(std::string(VbTrim(path))).extension().string());
    const char* exts[] = {".GLZ", ".GLA", ".GLS", ".GLC", ".AGF"};
    for (int i = 0; i < 5; ++i) {
        if (ext == exts[i]) return i + 1;
    }
    return fallback;
}

bool frm4Import::ImportFile(const std::string& fullPath, int fileType) {
    if (fileType < kGLZ || fileType > kAGF) {
        fileType_ = fileType;
        return false;
    }
    fileType_ = fileType;
    const std::filesystem::path p(fullPath);
    ImportOptions options;
    options.progress = hooks_.progress;
    options.refitOtherFormulas = chkRefitOther.value;
    bool read = false;
    {
        BusyPointer busy(dialogs_);
        switch (fileType) {
            case kGLZ:
                read = ReadGlz(fullPath, options);
                break;
            case kGLA:
            case kGLS:
                read = ReadOldFile(fullPath, fileType);
                break;
            case kGLC:
                read = ReadGlc(fullPath, options);
                break;
            default:
                read = ReadAgf(fullPath, options);
        }
    }
    if ((fileType == kGLC || fileType == kAGF) && refitCount_ >= 1) {
        newMsg_.Display(kRefitNotice, "Enhanced import", true, 250, "ImportPolyRefit");
    }
    bas_.SaveLastType(fileType);
    bas_.SaveLastPath(fileType, p.parent_path().string());
    form.caption = "Import material data from text file: " + p.filename().string();
    return read;
}

bool frm4Import::ReadGlz(const std::string& fullPath, const ImportOptions& options) {
    CImportNewGLZ importer(dialogs_, options);
    std::vector<MaterialRecord> records;
    int count = 0;
    int16_t ok = kFalse;
    importer.ReadFile(fullPath, records, count, ok);
    // Records read before a failure are shown.
    StageWhole(std::move(records));
    importCount_ = count;
    CheckStaged({});
    UpdateTable();
    if (!ok) {
        ShowInfo(WithReason(FailureMessage(fullPath), importer.failure()));
    } else if (count == 0) {
        ShowInfo(NoneMessage(fullPath));
    }
    return ok != 0;
}

bool frm4Import::ReadOldFile(const std::string& fullPath, int fileType) {
    std::vector<MaterialRecord> one;
    std::string why;
    int16_t ok = kFalse;
    if (fileType == kGLA) {
        CImportOldLumbrak importer;
        importer.ReadFile(fullPath, one, ok);
        why = importer.failure();
    } else {
        CImportOldKelmora importer;
        importer.ReadFile(fullPath, one, ok);
        why = importer.failure();
    }
    if (!ok) {
        ShowInfo(WithReason(NoneMessage(fullPath), why));
        return false;
    }
    StageWhole(std::move(one));
    importCount_ = 1;
    CheckStaged({});
    UpdateTable();
    return true;
}

bool frm4Import::ReadGlc(const std::string& fullPath, const ImportOptions& options) {
    CImportOsloGLC importer(dialogs_, options);
    int count = 0, refits = 0;
    int16_t ok = kFalse;
    std::vector<float> errors;
    importer.ReadFile(fullPath, importList_, count, refits, errors, ok);
    importCount_ = count;
    ResetStaging();
    refitErrors_ = std::move(errors);
    refitErrors_.resize(importList_.size(), 0.0f);
    refitCount_ = refits;
    CheckStaged(importer.stated());
    skippedNote_ = PassedOverSummary(importer.passedOver());
    UpdateTable();
    if (!ok) {
        ShowInfo(WithReason(FailureMessage(fullPath), importer.failure()));
    } else if (count == 0) {
        ShowInfo(WithReason(NoneMessage(fullPath), skippedNote_));
    }
    return ok != 0;
}

bool frm4Import::ReadAgf(const std::string& fullPath, const ImportOptions& options) {
    CImportZemaxAGF importer(dialogs_, options);
    int count = 0, refits = 0;
    int16_t ok = kFalse;
    std::vector<float> errors;
    std::string errorText;
    importer.ReadFile(fullPath, std::filesystem::path(fullPath).filename().string(), importList_,
                      count, refits, errors, errorText, 8, ok);
    // Glasses read before a failure are kept and shown.
    importCount_ = count;
    ResetStaging();
    refitErrors_ = std::move(errors);
    refitErrors_.resize(importList_.size(), 0.0f);
    refitCount_ = refits;
    skippedCount_ = importer.skippedFormulaCount();
    if (skippedCount_ == 1) {
        skippedNote_ = "1 glass was skipped: its AGF formula is not supported.";
    } else if (skippedCount_ > 1) {
        skippedNote_ = std::to_string(skippedCount_) +
                       " glasses were skipped: their AGF formula is not supported.";
    }
    CheckStaged(importer.stated());
    UpdateTable();
    if (!ok) {
        ShowInfo(errorText.empty() ? FailureMessage(fullPath) : errorText);
    } else if (count == 0) {
        ShowInfo(WithReason(NoneMessage(fullPath), skippedNote_));
    }
    return ok != 0;
}

}  // namespace ostrel
