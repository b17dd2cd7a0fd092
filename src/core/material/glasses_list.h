#pragma once
// The custom material list and its file, and the catalogue and generic names that guard
// the user's names.
#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/error_display.h"

namespace ostrel {

inline constexpr const char* kCustomFileName = "UserDefineGlassesV3.DAT";
inline constexpr const char* kCustomBackupName = "UserDefineGlassesBkup.DAT";
inline constexpr const char* kCustomFileV2Name = "UserDefineGlassesV2.DAT";
inline constexpr const char* kCustomFileV1Name = "UserDefineGlasses.DAT";
inline constexpr const char* kCustomFileV0Name = "UserDefGlasses.DAT";
inline constexpr const char* kCatalogueFileName = "STFenmarkExA.dat";
inline constexpr const char* kGenericFileName = "SPFenmark.dat";

// Name, "|", source, each trimmed and in upper case (code-page bytes).
std::string MaterialKey(const MaterialRecord& rec);
// The same key for a name and a source given as texts.
std::string MaterialKeyOf(std::string_view name, std::string_view source);
bool SameMaterial(const MaterialRecord& a, const MaterialRecord& b);
// Name and source not blank after trimming, and neither holds a NUL.
bool NameUsable(const MaterialRecord& rec);

class GlassesList {
  public:
    // dataFolder: where the custom file lives. Failures of reading and writing go through
    // the error displayer.
    GlassesList(std::string dataFolder, ErrorDisplayer& errors);

    // --- custom list; positions are 1-based as everywhere in the program ---
    int CustomCount() const { return static_cast<int>(customList_.size()); }
    const std::vector<MaterialRecord>& CustomList() const { return customList_; }
    bool ListAdd(const MaterialRecord& rec, bool overwrite);
    // Stamps DateChanged with the clock's present date and time, then ListAdd.
    bool ListAddDated(MaterialRecord rec, bool overwrite);
    bool ListContains(const MaterialRecord& rec) const;
    // The same for the key of a material (MaterialKey, MaterialKeyOf).
    bool ListContainsKey(const std::string& key) const { return customKeys_.count(key) > 0; }
    bool GetMaterial(int index, MaterialRecord& rec) const;
    std::vector<MaterialRecord> CopyListOut() const { return customList_; }
    void ReplaceList(std::vector<MaterialRecord> list);

    // Reads the current file, or converts the newest older file found. False when a file
    // could not be read (reported).
    bool LoadCustomFile();
    // Material `index` (from 1) of the current file in `dataFolder`, as LoadCustomFile
    // would list it, read without loading the list: of the records before it only the
    // name and source are read. Nothing (and no report) when there is no current file,
    // it cannot be read, or it lists fewer materials; the caller then loads the list.
    static std::optional<MaterialRecord> ReadListedMaterial(const std::string& dataFolder,
                                                            int index);
    // The summary of every material of the current file in `dataFolder`, in the order and
    // with the passing over of LoadCustomFile, read without building the records. Nothing
    // (and no report) when there is no current file or it cannot be read; the caller then
    // loads the list, which reports.
    static std::optional<std::vector<MaterialSummary>> ReadListedSummaries(
        const std::string& dataFolder);
    // Writes the list to the current file (backup first). False when it could not be
    // written (reported); the file on disk is then as it was.
    bool SaveCustomFile();

    // Writes the given list as the custom file (backup first; an empty list leaves no
    // file). False when it could not be written (reported); the file is then unchanged.
    bool WriteCustomFile(const std::vector<MaterialRecord>& list);
    // True when the file at start-up could not be read: saving is refused from then on,
    // so that the unread file is not replaced.
    bool LoadFailed() const { return loadFailed_; }

    // Saves the list given and, only when that succeeded, makes it the list in memory.
    bool CommitList(std::vector<MaterialRecord> list);
    // ListAddDated followed by a save; the list is left as it was when the save failed.
    bool AddAndSave(const MaterialRecord& rec, bool overwrite);

    // --- names guarded against ---
    void LoadCatalogueNames(const std::string& lumbrakFolder);
    void LoadGenericNames(const std::string& lumbrakFolder);
    bool ListContainsSupplied(const MaterialRecord& rec) const;
    bool ListContainsSuppliedKey(const std::string& key) const {
        return catalogueKeys_.count(key) > 0 || genericKeys_.count(key) > 0;
    }
    // The rule applied wherever a name is proposed; false with the reason in message.
    bool CheckOverwrite(const MaterialRecord& rec, bool allowOverwrite, std::string& message) const;

    // The list form's refresh; every change of the list ends with it.
    void SetRefreshHandler(std::function<void()> handler) { refresh_ = std::move(handler); }
    void RefreshListForm() const {
        if (refresh_) refresh_();
    }

    const std::string& dataFolder() const { return folder_; }
    ErrorDisplayer& errors() { return errors_; }

  private:
    void RebuildKeys();

    std::string folder_;
    ErrorDisplayer& errors_;
    std::vector<MaterialRecord> customList_;
    std::unordered_set<std::string> customKeys_;
    std::unordered_set<std::string> catalogueKeys_;
    std::unordered_set<std::string> genericKeys_;
    std::function<void()> refresh_;
    bool loadFailed_ = false;
};

}  // namespace ostrel
