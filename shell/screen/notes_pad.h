#pragma once
// The note pad (Notes) of every model screen: edits the title, author or
// comments in a multi-line cell. The field under edit and its text travel in
// the application state.

#include <string>

#include "model/app_state.h"

namespace bm {

enum class NoteField { Title, Author, Comments };

class NotesPad {
public:
    explicit NotesPad(AppState& state);
    const std::string& caption() const { return state_.notesField; }
    std::string text;      // the cell NotesText
    bool changed = false;  // the pad's changed flag
    bool closed = false;
    void ok();             // okCB, and Enter in the cell
    void cancel();         // cancelCB

private:
    AppState& state_;
};

}  // namespace bm
