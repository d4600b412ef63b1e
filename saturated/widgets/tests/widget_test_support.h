#pragma once
// Support of the saturated screen's widget tests: the application object,
// acting on a modal window once it is up, and waiting with events running.

#include <QApplication>
#include <QString>
#include <QWidget>
#include <functional>

namespace bm::widgettest {

// Runs `action` on the modal window named `name` as soon as it is the active one.
void onModal(const QString& name, std::function<void(QWidget*)> action, int timeoutMs = 5000);
// Runs events until `done` or `ms` passed; false on the time-out.
bool waitFor(const std::function<bool()>& done, int ms = 3000);
// Saves a picture of the widget into $BRENMOOR_SCREENSHOT_DIR when that is set.
void saveShot(QWidget* widget, const QString& name);
// Lets pending events (deferred focus moves, painting) run.
void settle();

}  // namespace bm::widgettest
