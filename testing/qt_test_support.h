#pragma once
// Support for the widget tests: the application object, and a way to act on a
// modal dialog once it is up (dialogs run their own event loop).

#include <QApplication>
#include <QString>
#include <QWidget>
#include <functional>

namespace bm::qtest {

// Runs `action` on the modal window named `name` as soon as it is the active
// modal window. Gives up after `timeoutMs` (and records the failure).
void onModal(const QString& name, std::function<void(QWidget*)> action, int timeoutMs = 5000);

// Closes any modal window that is still up after `ms`; a test that hangs fails instead.
// Generous, because a loaded machine (a parallel build beside the tests) can
// take seconds to list a folder in a file dialog.
class Watchdog {
public:
    explicit Watchdog(int ms = 30000);
    ~Watchdog();
    bool fired() const;

private:
    struct State;
    State* state_;
};

// Lets pending events (deferred focus moves, painting) run.
void settle();

// Waits (running events) until `done` or `ms` passed.
bool waitFor(const std::function<bool()>& done, int ms = 10000);

// A line of pdftotext's text with its ligatures spelled out.
QString spelledOut(QString line);

// Saves a picture of the widget into $BRENMOOR_SCREENSHOT_DIR when that is set (for looking at the screens).
void saveShot(QWidget* widget, const QString& name);

template <typename T>
T* child(QWidget* parent, const QString& name) {
    T* w = parent->findChild<T*>(name);
    return w;
}

}  // namespace bm::qtest
