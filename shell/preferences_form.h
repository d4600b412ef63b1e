#pragma once
// statusForm, the preferences screen, as a form model: the paths (changed in
// memory at once), the buttons that change them, the plot-utility choice, the free
// space line, and saving to the settings file.

#include <functional>
#include <string>

#include "model/app_state.h"

namespace bm {

class UserInterface;

class PreferencesForm {
public:
    static constexpr const char* kCaption = "ORVA Preferences...";
    static constexpr const char* kDirectoryCancelled = "Cancel Button is Clicked";

    // The rows of the screen, in their order.
    enum Row { TextEditor = 0, ChemicalDatabase, TemporaryDirectory, AirData, GroundWaterData, SurfaceData, RowCount };
    static const char* helpLine(Row row);      // "Change text editor by clicking button"
    static const char* rowHelpLine(Row row);   // the same without " by clicking button"

    // The picker of a directory: gets the title and the present path, returns the
    // choice or kDirectoryCancelled.
    using DirectoryPicker = std::function<std::string(const std::string& title, const std::string& current)>;

    PreferencesForm(AppState& state, UserInterface& ui, DirectoryPicker picker);

    const std::string& value(Row row) const;
    void setValue(Row row, const std::string& text);   // typed into the row
    // The row's button: a file dialog for the editor and the database, the directory picker for the others.
    void clickButton(Row row);

    // The plot utility: 0 the original version (trazel), 1 the new one (trazel1).
    int plotUtilityChoice() const;
    void choosePlotUtility(int version);
    std::string plotUtilityPath(int version) const;

    // "###,###" kilobytes of the free space + " KBytes".
    static std::string freeSpaceText(double freeBytes);
    std::string freeSpaceText() const;

    bool changed() const { return changed_; }
    // Writes the settings file; true when written.
    bool save();
    // Leaving: with unsaved changes asks "Save changes"; Yes saves. True when the screen may close.
    bool leave();

private:
    std::string& field(Row row);
    AppState& state_;
    UserInterface& ui_;
    DirectoryPicker picker_;
    bool changed_ = false;
};

}  // namespace bm
