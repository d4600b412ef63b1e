#include "testing/qt_test_support.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

namespace bm::qtest {

namespace {
// The application for all widget tests, made before the first test runs.
class QtEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        static int argc = 1;
        static char name[] = "qtest_shell";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance()) app_ = new QApplication(argc, argv);
    }
    void TearDown() override {
        delete app_;
        app_ = nullptr;
    }

private:
    QApplication* app_ = nullptr;
};
const auto* const environment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);
}  // namespace

void onModal(const QString& name, std::function<void(QWidget*)> action, int timeoutMs) {
    auto* timer = new QTimer;
    auto* clock = new QElapsedTimer;
    clock->start();
    timer->setInterval(5);
    QObject::connect(timer, &QTimer::timeout, [timer, clock, name, action, timeoutMs] {
        QWidget* w = QApplication::activeModalWidget();
        if (w && w->objectName() == name && w->isVisible()) {
            timer->stop();
            timer->deleteLater();
            delete clock;
            action(w);
            return;
        }
        if (clock->elapsed() > timeoutMs) {
            timer->stop();
            timer->deleteLater();
            delete clock;
            ADD_FAILURE() << "no modal window " << name.toStdString() << " appeared (active: "
                          << (w ? w->objectName().toStdString() : std::string("none")) << ")";
        }
    });
    timer->start();
}

struct Watchdog::State {
    QTimer timer;
    bool fired = false;
};

Watchdog::Watchdog(int ms) : state_(new State) {
    state_->timer.setInterval(ms);
    QObject::connect(&state_->timer, &QTimer::timeout, [s = state_] {
        if (QWidget* w = QApplication::activeModalWidget()) {
            s->fired = true;
            ADD_FAILURE() << "modal window " << w->objectName().toStdString() << " left open";
            w->close();
        }
    });
    state_->timer.start();
}

Watchdog::~Watchdog() { delete state_; }
bool Watchdog::fired() const { return state_->fired; }

QString spelledOut(QString line) {
    line.replace(QChar(0xFB00), QStringLiteral("ff"));
    line.replace(QChar(0xFB01), QStringLiteral("fi"));
    line.replace(QChar(0xFB02), QStringLiteral("fl"));
    line.replace(QChar(0xFB03), QStringLiteral("ffi"));
    line.replace(QChar(0xFB04), QStringLiteral("ffl"));
    return line;
}

void saveShot(QWidget* widget, const QString& name) {
    const QByteArray dir = qgetenv("BRENMOOR_SCREENSHOT_DIR");
    if (dir.isEmpty() || !widget) return;
    widget->grab().save(QString::fromLocal8Bit(dir) + u'/' + name + QStringLiteral(".png"));
}

void settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

bool waitFor(const std::function<bool()>& done, int ms) {
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > ms) return false;
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

}  // namespace bm::qtest
