#pragma once
// What the fuzz targets share. The readers take a file name, so each input is written to a
// file in a folder of the fuzzing process's own (below $TMPDIR, removed at exit); and the
// few boxes a reader may show are answered "OK" without a word.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel::fuzz {

// The process's own folder, made on first use.
const std::filesystem::path& Folder();

// Writes the input to `name` below Folder() (sub-folders made as needed) and returns its
// full path.
std::filesystem::path PutFile(const std::string& name, const uint8_t* data, size_t size);

// Empties Folder(), for readers that look at every file in it.
void ClearFolder();

// Stops the run (abort, so that the fuzzer keeps the input) when `holds` is false; `what`
// names the broken rule in the report.
void Expect(bool holds, const char* what);

// The rule every record a reader hands on must keep: its point counts fit their tables (the
// forms and writers index the tables by them).
void CheckRecords(const std::vector<MaterialRecord>& records);

class QuietDialogs : public Dialogs {
  public:
    MsgAnswer MsgBox(const std::string&, MsgButtons buttons, MsgIcon, const std::string&) override {
        return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes
                                                                                  : MsgAnswer::OK;
    }
    std::optional<std::string> InputBox(const std::string&, const std::string&,
                                        const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> FileOpen(const FileDialogSpec&) override { return std::nullopt; }
    std::optional<std::string> FileSave(const FileDialogSpec&) override { return std::nullopt; }
    void SetBusy(bool) override {}
    void HelpNote(const std::string&, bool) override {}
    bool OpenUrl(const std::string&) override { return false; }
};

}  // namespace ostrel::fuzz
