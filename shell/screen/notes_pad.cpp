#include "shell/screen/notes_pad.h"

#include "shell/screen/screen_host.h"

namespace bm {

NotesPad::NotesPad(AppState& state) : text(state.notesText), state_(state) {}

void NotesPad::ok() {
    if (text != state_.notesText) {
        state_.notesText = text;
        changed = true;
    }
    text.clear();
    closed = true;
}

void NotesPad::cancel() {
    state_.notesText.clear();
    closed = true;
}

void ScreenHost::showNotes(NotesPad& pad) { pad.cancel(); }

}  // namespace bm
