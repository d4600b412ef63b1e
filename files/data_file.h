#pragma once
// The data file: one model in one text file, its inputs as typed, its last
// results and its Monte Carlo set-up. The extension names the model: .one .two
// .tri (single chemical, one to three dimensions), .mc1 .mc2 .mc3 (several
// chemicals), .u1d (unsaturated), .mcu (unsaturated, several chemicals), .var
// (time-varying dispersion).
//
// Lines end in CR LF on writing; reading takes CR LF or a lone LF. The file is
// in the Windows-1252 code page (see files/code_page.h).
//
// Errors are RuntimeError with the program's numbers, for the caller to report
// through handleError with "File Error" as its title context: 53 missing file,
// 62 reading past the end or a Monte Carlo marker that does not match,
// 6 a count that does not fit 16 bits, 9 a subscript out of bounds (more result
// rows than input rows in a Monte Carlo block), 13 a number field that is not a
// number, 7 a file or a grid too large for memory; on writing 61 no space left,
// 75 a folder or file that cannot be written, 76 a folder that does not exist.
// After a read error the DataSet holds what was read so far.

#include <string>

#include "model/data_set.h"

namespace bm {

// How a path's extension is found for the test of multi-chemical files.
enum class ExtensionRule {
    FirstFullStop,  // the workbench: behind the first full stop of the whole path
    FileNameOwn,    // the batch calculator: the file name's own, behind its last full stop
};

// Reads the file into `data`: the current format when the first line holds
// "version" in any case, otherwise the old format. On success
// data.currentFileName is `path`. Returns true; failures raise RuntimeError.
bool readDataFile(DataSet& data, const std::string& path, ExtensionRule rule = ExtensionRule::FirstFullStop);

// Writes `data` to `path`, replacing the file only once the new text is
// complete on disk: a failed save leaves the old file as it was and no
// temporary file behind. Also stores back what the format settles on writing
// (an empty retardation as "1", a superposition index of 0 as 1, the model's
// Monte Carlo store in the working set, 0 iterations as 1).
void writeDataFile(DataSet& data, const std::string& path);

// The text writeDataFile saves (UTF-8, before the code page), with the same
// side effects on `data`.
std::string composeDataFile(DataSet& data);
// Reads a file's text (UTF-8) as readDataFile does, `path` serving only the
// extension test. Returns true.
bool parseDataFile(DataSet& data, const std::string& text, const std::string& path,
                   ExtensionRule rule = ExtensionRule::FirstFullStop);

// The extension test of the current reader: the extension of the path by
// `rule`, upper-cased, against "MC1", "MC2", "MC3" for the model types of one
// to three dimensions and "MCU" for the unsaturated ones. By the workbench's
// rule a full stop in a folder name ("C:\data.v2\a.mc1", "./a.mc1") makes a
// multi-chemical file read as single.
bool extensionSelectsMultiChemical(const std::string& path, const std::string& modelType,
                                   ExtensionRule rule = ExtensionRule::FirstFullStop);

// The file name's own extension without its full stop ("mc1" of "./v2.0/a.b.mc1"),
// empty when the name has none.
std::string fileNameExtension(const std::string& path);

}  // namespace bm
