#pragma once
// The File commands between the user and the data file: the question before
// data is lost, the open and save dialogs, and what the callers are told.
// Everything the user sees goes through the UserInterface seam; the file dialog
// is askFile with a FileDialogRequest whose filter keeps the "Caption|pattern|..."
// form. Kind Open asks for an existing file; kind Save asks no overwrite question
// itself (chooseDataFile asks it, as error 58's "Overwrite File").
//
// `statusTag` stands for the main window's tag: it is set to "File Error" when
// an error was reported, so that the caller opens no screen; it is left alone
// otherwise (a cancel included).

#include <string>

#include "model/data_set.h"

namespace bm {

class UserInterface;

// The cancel token of the dialogs.
inline constexpr const char* kDontDoAnything = "Don't Do Anything";
// What statusTag is set to after a reported error.
inline constexpr const char* kFileErrorTag = "File Error";

// Before data is lost. By data.dataState: 2 asks "Data Not Saved" (Yes saves and
// goes on when the save succeeded, No goes on, Cancel stays); 1 asks "Data
// Changed" (Yes stays to calculate, No goes on); otherwise goes on.
// True means go on, false means stay.
bool saveDataFilePrompt(DataSet& data, UserInterface& ui, std::string& statusTag);

// The dialog of `dialogPurpose` (0 all model files, 1 single-chemical, other
// multi-chemical) with kind "Open" or "Save", title `title`. Returns the chosen
// path, or "Don't Do Anything" on a cancel, a missing file on Open (error 53
// reported), or No to "Overwrite File" on Save. On Save a name without "." gets
// the model's extension.
std::string chooseDataFile(DataSet& data, UserInterface& ui, const std::string& title, const std::string& kind,
                           int dialogPurpose, const std::string& modelType, std::string& statusTag);

// Open: the dialog, then the reader. True when a file was read: then
// currentFileName is its path, the model's Monte Carlo point flag is cleared,
// needsDisplayRefresh is true and dataState 0. A read error is reported under
// "File Error" (a bounds error as a file of no recognised format) and the
// DataSet keeps what was read.
bool openModelFile(DataSet& data, UserInterface& ui, const std::string& title, int dialogPurpose,
                   const std::string& modelType, std::string& statusTag);

// "Save" or "Save As". A "Save" of a model whose file is not on the disk (never
// saved, or gone) asks for a name with the all-files dialog titled "Save Data File
// As". True when written: currentFileName is the path, the model's Monte Carlo
// point flag is cleared and dataState is 0. A failed write leaves the file on
// the disk as it was and dataState unchanged.
bool saveDataFile(DataSet& data, UserInterface& ui, const std::string& kind, const std::string& modelType,
                  std::string& statusTag);

// Close: the save prompt, and on going on closeModel("Complete"). True when closed.
bool closeModelFile(DataSet& data, UserInterface& ui, std::string& statusTag);

// The file name panel's text: "Filename: " + currentFileName.
std::string fileNameCaption(const DataSet& data);

}  // namespace bm
