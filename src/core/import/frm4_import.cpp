#include "core/import/frm4_import.h"

#include <algorithm>
#include <filesystem>

#include "core/import/import_new_glz.h"
#include "core/import/import_old_files.h"
#include "core/import/import_oslo_glc.h"
#include "core/import/import_zemax_agf.h"
#include "core/material/name_check.h"
#include "core/materialform/verification.h"
#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

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

void frm4Import::ResetStaging(bool tablesPending) {
    tablesPending_.assign(importList_.size(), tablesPending);
    finished_.assign(importList_.size(), false);
    flagged_.assign(importList_.size(), false);
    refitErrors_.assign(importList_.size(), 0.0f);
    checkTexts_.assign(importList_.size(), std::string());
    refitCount_ = 0;
    skippedCount_ = 0;
    skippedNote_.clear();
}

void frm4Import::CheckStaged(const std::vector<StatedIndex>& stated) {
    for (size_t i = 0; i < importList_.size(); ++i) {
        const ImportCheck c = CheckImported(importList_[i], i < stated.size() ? stated[i] : StatedIndex{});
        checkTexts_[i] = c.text;
        flagged_[i] = c.flagged;
    }
}

const MaterialRecord& frm4Import::Staged(size_t i) {
    MaterialRecord& rec = importList_[i];
    if (i < finished_.size() && !finished_[i]) {
        if (tablesPending_[i]) FinishImportedTrans(rec);
        tablesPending_[i] = false;
        // A glass leaves staging with the numbers derived from the polynomial it now holds
        // (after a refit, the Schott form), as a fitted one does; they are worked out here,
        // once per glass, so that reading a whole catalogue stays as quick as it was.
        UpdateDerivedData(rec);
        UpdateGlassCode(rec);
        finished_[i] = true;
    }
    return rec;
}

const std::vector<MaterialRecord>& frm4Import::ImportList() {
    for (size_t i = 0; i < importList_.size(); ++i) Staged(i);
    return importList_;
}

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
    fileType_ = fileType;
    const std::filesystem::path p(fullPath);
    const std::string folder = p.parent_path().string();
    const std::string fileName = p.filename().string();
    const std::string failureMsg = "Failure in file read " + fullPath + "!";
    const std::string noneMsg = "Unable to import any glasses from file " + fullPath + "!";
    ImportOptions options;
    options.progress = hooks_.progress;
    options.refitOtherFormulas = chkRefitOther.value;
    // Most of a large catalogue is only looked at; Staged finishes the tables of a glass
    // that is added or previewed.
    options.leaveTransTables = true;
    int16_t ok = kFalse;
    int count = 0;
    bool read = false;
    {
        BusyPointer busy(dialogs_);
        switch (fileType) {
            case kGLZ: {
                CImportNewGLZ importer(dialogs_, options);
                importer.ReadFile(fullPath, importList_, count, ok);
                importCount_ = count;
                ResetStaging();
                CheckStaged({});
                if (ok) {
                    UpdateTable();
                    if (count == 0) ShowInfo(noneMsg);
                } else {
                    UpdateTable();
                    ShowInfo(WithReason(failureMsg, importer.failure()));
                }
                read = ok != 0;
                break;
            }
            case kGLA:
            case kGLS: {
                std::vector<MaterialRecord> one;
                std::string why;
                if (fileType == kGLA) {
                    CImportOldLumbrak importer;
                    importer.ReadFile(fullPath, one, ok);
                    why = importer.failure();
                } else {
                    CImportOldKelmora importer;
                    importer.ReadFile(fullPath, one, ok);
                    why = importer.failure();
                }
                if (ok) {
                    importList_ = std::move(one);
                    importCount_ = 1;
                    ResetStaging();
                    CheckStaged({});
                    UpdateTable();
                } else {
                    ShowInfo(WithReason(noneMsg, why));
                }
                read = ok != 0;
                break;
            }
            case kGLC: {
                CImportOsloGLC importer(dialogs_, options);
                int refits = 0;
                std::vector<float> errors;
                importer.ReadFile(fullPath, importList_, count, refits, errors, ok);
                importCount_ = count;
                ResetStaging(true);
                refitErrors_ = errors;
                refitErrors_.resize(importList_.size(), 0.0f);
                refitCount_ = refits;
                CheckStaged(importer.stated());
                skippedNote_ = PassedOverSummary(importer.passedOver());
                UpdateTable();
                if (!ok) {
                    ShowInfo(WithReason(failureMsg, importer.failure()));
                } else if (count == 0) {
                    ShowInfo(WithReason(noneMsg, skippedNote_));
                }
                read = ok != 0;
                break;
            }
            case kAGF: {
                CImportZemaxAGF importer(dialogs_, options);
                int refits = 0;
                std::vector<float> errors;
                std::string errorText;
                importer.ReadFile(fullPath, fileName, importList_, count, refits, errors, errorText,
                                  8, ok);
                // Glasses read before a failure are kept and shown.
                importCount_ = count;
                ResetStaging(true);
                refitErrors_ = errors;
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
                    ShowInfo(errorText.empty() ? failureMsg : errorText);
                } else if (count == 0) {
                    ShowInfo(WithReason(noneMsg, skippedNote_));
                }
                read = ok != 0;
                break;
            }
            default:
                return false;
        }
    }
    if ((fileType == kGLC || fileType == kAGF) && refitCount_ >= 1) {
        newMsg_.Display(kRefitNotice, "Enhanced import", true, 250, "ImportPolyRefit");
    }
    bas_.SaveLastType(fileType);
    bas_.SaveLastPath(fileType, folder);
    form.caption = "Import material data from text file: " + fileName;
    return read;
}

void frm4Import::UpdateTable() {
    auto& g = ssGlasses;
    const bool wasOn = g.Redraw();
    g.SetRedraw(false);
    if (refitCount_ == 0) {
        lblReFit.caption = std::string();
    } else if (refitCount_ == 1) {
        lblReFit.caption = std::string(
            "1 glass has been refited to an index polynomial used in Lumbrak.  The average "
            "error is in the last column.");
    } else {
        lblReFit.caption = std::to_string(refitCount_) +
                           " glasses have been refited to index polynomial[s] used in Lumbrak.  "
                           "The average error is in the last column.";
    }
    lblSkipped.caption = skippedNote_;
    const int rows = std::min<int>(importCount_, static_cast<int>(importList_.size()));
    g.SetMaxRows(0);
    g.SetMaxRows(std::max(rows, 0));
    for (int r = 1; r <= rows; ++r) {
        const auto i = static_cast<size_t>(r - 1);
        const MaterialRecord& rec = importList_[i];
        const auto& gen = rec.General;
        double lo = 0, hi = 0;
        const int points = std::clamp<int>(gen.IndexPoints, 0, kMaxIndexPoints);
        if (points > 0) {
            lo = rec.Measured.IndexValue[0];
            hi = rec.Measured.IndexValue[static_cast<size_t>(points - 1)];
        } else if (gen.IndexWvMin >= 1 && gen.IndexWvMax >= 1) {
            int16_t ok = 0;
            lo = IndexFromPolynomial(gen.PolyCoef, gen.IndexWvMin, gen.Polytype, ok);
            hi = IndexFromPolynomial(gen.PolyCoef, gen.IndexWvMax, gen.Polytype, ok);
        }
        g.SetText(kColGlass, r, gen.GlassName.Text());
        g.SetText(kColSource, r, gen.Source.Text());
        g.SetText(
            kColWaveband, r,
            FormatNumber(gen.IndexWvMin, "0.0") + " - " + FormatNumber(gen.IndexWvMax, "0.0"));
        g.SetText(kColIndexRange, r,
                  FormatNumber(lo, "0.0000") + " - " + FormatNumber(hi, "0.0000"));
        const ReadyStatus st = ReadyStatusCell(rec);
        const bool ready = st.colour == ReadyColour::Green;
        if (i < flagged_.size() && flagged_[i]) {
            g.SetText(kColStatus, r, ready ? std::string("Check") : "Check " + st.text);
            g.SetCellColour(kColStatus, r, ready ? kStatusCheck : kStatusRed);
        } else {
            g.SetText(kColStatus, r, st.text);
            g.SetCellColour(kColStatus, r, ready ? kStatusGreen : kStatusRed);
        }
        const float err = i < refitErrors_.size() ? refitErrors_[i] : 0.0f;
        std::string refit = "not refitted ";
        if (err != 0.0f) {
            refit = FormatNumber(err, "0.000000");
            if (gen.Polytype == 1) refit += "-Schott";
            if (gen.Polytype == 2) refit += "-Sellmeier";
        }
        g.SetText(kColRefit, r, refit);
        g.SetText(kColCheck, r, i < checkTexts_.size() ? checkTexts_[i] : std::string());
    }
    g.SetColumnHidden(kColRefit, refitCount_ == 0);
    g.SetRedraw(wasOn);
}

bool frm4Import::AddRange(int first, int last) {
    if (importCount_ == 0) {
        const MsgAnswer a = dialogs_.MsgBox(
            "No materials have been imported, so none can be added to the main list!\n\n"
            "Do you wish to open a material text file now?",
            MsgButtons::YesNo, MsgIcon::Question, {});
        if (a == MsgAnswer::Yes) {
            comImportClick();
            return false;
        }
    }
    const int count = std::min<int>(importCount_, static_cast<int>(importList_.size()));
    first = std::max(first, 1);
    last = std::min(last, count);
    // Which glasses of the range are to be added; the Check question may leave some out.
    std::vector<bool> take(static_cast<size_t>(std::max(count, 0)) + 1, true);
    auto names = [&](auto test) {
        std::string joined;
        for (int i = first; i <= last; ++i) {
            const MaterialRecord& rec = importList_[static_cast<size_t>(i - 1)];
            if (!take[static_cast<size_t>(i)] || !test(i, rec)) continue;
            if (!joined.empty()) joined += ", ";
            joined += rec.General.GlassName.Text() + "/" + rec.General.Source.Text();
        }
        return joined;
    };
    const std::string catalogue =
        names([this](int, const MaterialRecord& r) { return list_.ListContainsSupplied(r); });
    if (!catalogue.empty()) {
        dialogs_.MsgBox(
            "The following materials are catalog glasses and cannot be overwritten!"
            "\n\n" +
                catalogue + "\n\nIf you really want to use this data, then rename the 'Source'.",
            MsgButtons::OK, MsgIcon::Exclamation, {});
        return false;
    }
    // A glass marked Check is added only when the user says so: Yes adds it with the others,
    // No leaves it out, Cancel adds nothing.
    auto isFlagged = [this](int i) {
        const auto k = static_cast<size_t>(i - 1);
        return k < flagged_.size() && flagged_[k];
    };
    const std::string flagged = names([&](int i, const MaterialRecord&) { return isFlagged(i); });
    if (!flagged.empty()) {
        const MsgAnswer a = dialogs_.MsgBox(
            "The following materials are marked Check: their index disagrees with the figures "
            "of their file, or cannot be computed somewhere in their waveband:\n\n" +
                flagged +
                "\n\nDo you want to add them all the same?\n(Yes adds them, No leaves them out, "
                "Cancel adds nothing.)",
            MsgButtons::YesNoCancel, MsgIcon::Exclamation, {});
        if (a == MsgAnswer::Cancel) return false;
        if (a == MsgAnswer::No) {
            bool any = false;
            for (int i = first; i <= last; ++i) {
                if (isFlagged(i)) take[static_cast<size_t>(i)] = false;
                any = any || take[static_cast<size_t>(i)];
            }
            if (!any) return false;
        }
    }
    const std::string custom =
        names([this](int, const MaterialRecord& r) { return list_.ListContains(r); });
    if (!custom.empty()) {
        const MsgAnswer a =
            dialogs_.MsgBox("The following materials are already in your collection:\n\n" + custom +
                                "\n\nDo you want to overwrite the existing data?",
                            MsgButtons::YesNo, MsgIcon::Question, {});
        if (a != MsgAnswer::Yes) return false;
    }
    // The list in memory is kept as it was when the file cannot be written.
    std::vector<MaterialRecord> before = list_.CopyListOut();
    for (int i = first; i <= last; ++i) {
        if (take[static_cast<size_t>(i)]) {
            list_.ListAddDated(Staged(static_cast<size_t>(i - 1)), true);
        }
    }
    if (!list_.SaveCustomFile()) {
        list_.ReplaceList(std::move(before));
        return false;
    }
    list_.RefreshListForm();
    return true;
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

void frm4Import::comRenameSourceClick() {
    if (importCount_ <= 0) return;
    const auto answer =
        dialogs_.InputBox("Enter new source name for these materials", form.caption, {});
    if (!answer) return;
    const std::string source = VbTrimCopy(*answer);
    if (source.empty()) return;
    if (const std::string refusal = NameRefusal(source); !refusal.empty()) {
        ShowNameRefusal(dialogs_, true, *answer, refusal);
        return;
    }
    for (auto& rec : importList_) rec.General.Source.Set(source);
    UpdateTable();
}

void frm4Import::comReviewClick() {
    if (importCount_ <= 0) return;
    if (selectedRow_ < 1 || selectedRow_ > std::min<int>(importCount_, importList_.size())) {
        return;
    }
    const MaterialRecord& rec = Staged(static_cast<size_t>(selectedRow_ - 1));
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
