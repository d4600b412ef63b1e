#pragma once
// statusForm: the preferences screen over PreferencesForm.

#include <QDialog>
#include <QList>
#include <memory>

#include "shell/preferences_form.h"

class QLabel;
class QLineEdit;
class QRadioButton;

namespace bm {

class PreferencesDialog : public QDialog {
    Q_OBJECT
public:
    explicit PreferencesDialog(AppState& state, QWidget* parent = nullptr);
    PreferencesForm& form() { return *form_; }
    // The help line at the foot of the screen.
    QString helpLine() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

private:
    void refresh();
    std::unique_ptr<PreferencesForm> form_;
    QList<QLineEdit*> rows_;
    QRadioButton *original_, *newer_;
    QLabel* helpLine_;
    QLabel* freeSpace_;
};

}  // namespace bm
