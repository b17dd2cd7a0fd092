#pragma once
// The custom glass file of the lens design program and of its tolerancing tool,
// USFenmark.dat in each program's folder: fixed records of 554 bytes, no header, in the
// order written. The file is rewritten whole: the new content is written to a temporary
// file first; only when it is complete does the old file become USFenmarkBkup.dat (one
// generation) and the new one take its name, so that either the old or the new file stands
// at any moment, and a write that fails leaves file and backup as they were.
#include <string>
#include <vector>

#include "core/external/update_summary.h"
#include "core/material/catalogue_record.h"
#include "core/material/material_record.h"
#include "core/platform/file_io.h"

namespace ostrel {

inline constexpr const char* kExternalFileName = "USFenmark.dat";
inline constexpr const char* kExternalBackupName = "USFenmarkBkup.dat";

// The records of a folder's file in file order, passing over any whose trimmed name is
// empty or holds a NUL; `present` false (and nothing read) when there is no file.
bool ReadExternalRecords(const std::string& folder, std::vector<ExternalRecord>& records,
                         bool& present, FileError& error);

// The folder's file as material records (general data only). A missing file leaves the
// list as it was; otherwise the list is replaced. False when the file could not be read.
bool ReadExternalFile(const std::string& folder, std::vector<MaterialRecord>& records,
                      FileError& error);

// Merges source[first..last] (1-based) into records, by material key. A material already
// there is replaced when overwriting and kept otherwise; a new one is added at the end.
// An empty `records` (no file yet) simply takes them all, so that an update makes the
// first file as a synchronisation does. Returns what was added, replaced and kept.
UpdateCounts MergeIntoExternalList(std::vector<MaterialRecord>& records,
                                   const std::vector<MaterialRecord>& source, int first, int last,
                                   bool overwrite);

// The folder's new file made ready beside the old one, to be put in place later by
// CommitExternalFile (which keeps the old file as the backup first). An empty list prepares
// nothing: the file stays as it is.
bool PrepareExternalFile(const std::string& folder, const std::vector<ExternalRecord>& records,
                         PreparedFile& prepared, FileError& error);
bool PrepareExternalFile(const std::string& folder, const std::vector<MaterialRecord>& records,
                         PreparedFile& prepared, FileError& error);
// Puts a prepared file in place, the old one becoming the backup; true when nothing was
// prepared.
bool CommitExternalFile(PreparedFile& prepared, FileError& error);

// Rewrites the folder's file from the list (prepared, then committed). An empty list leaves
// the file as it is and returns true. False when the new file could not be written; the old one
// then still stands.
bool RewriteExternalFile(const std::string& folder, const std::vector<ExternalRecord>& records,
                         FileError& error);
bool WriteExternalFile(const std::string& folder, const std::vector<MaterialRecord>& records,
                       FileError& error);

// The file image of a list of records.
std::string ExternalFileImage(const std::vector<ExternalRecord>& records);

}  // namespace ostrel
