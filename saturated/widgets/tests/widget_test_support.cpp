#include "widget_test_support.h"

#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

namespace bm::widgettest {

namespace {
class QtEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        static int argc = 1;
        static char name[] = "qtest_saturated";
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
            ADD_FAILURE() << "no modal window " << name.toStdString();
            if (w) w->close();
        }
    });
    timer->start();
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

void saveShot(QWidget* widget, const QString& name) {
    const QByteArray dir = qgetenv("BRENMOOR_SCREENSHOT_DIR");
    if (dir.isEmpty() || !widget) return;
    widget->grab().save(QString::fromLocal8Bit(dir) + u'/' + name + QStringLiteral(".png"));
}

void settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

}  // namespace bm::widgettest
