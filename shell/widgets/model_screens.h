#pragma once
// The screen registry: where Main opens the model screens, and where a model
// screen opens the Monte Carlo set-up screen (ModelScreen::MonteCarloForm).
// Each screen registers its opener here (modelScreenOpener makes one); a
// model screen not registered yet is stood in for by a plain screen that names
// the model kind and closes back to Main, and a model screen asks whether the
// Monte Carlo screen is registered before it offers it.

#include <QDialog>
#include <functional>

#include "shell/main_form.h"

class QLabel;

namespace bm {

// Shows the screen modally and returns when it has closed. `saveEnabled` is
// false after New: there is nothing to save yet.
using ModelScreenOpener = std::function<void(QWidget* parent, bool saveEnabled)>;

void registerModelScreen(ModelScreen screen, ModelScreenOpener opener);
bool hasModelScreen(ModelScreen screen);
// Opens the registered screen, or the stand-in.
void openModelScreen(QWidget* parent, ModelScreen screen, bool saveEnabled);

// The close path every model screen shares: the save question, then closeModel("Complete").
// False when the user chose to stay.
bool closeModelScreen();

// The stand-in screen.
class PlaceholderModelScreen : public QDialog {
    Q_OBJECT
public:
    PlaceholderModelScreen(ModelScreen screen, bool saveEnabled, QWidget* parent = nullptr);
    // The text that names the model kind.
    static QString describe(ModelScreen screen);

protected:
    void done(int result) override;
};

}  // namespace bm
