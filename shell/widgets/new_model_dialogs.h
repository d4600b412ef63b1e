#pragma once
// The three new-model dialogs. Each binds its option buttons to its form
// model; OK writes the choice into the DataSet, Cancel leaves it untouched.

#include <QDialog>
#include <QGroupBox>
#include <QList>

#include "shell/new_model_forms.h"

class QRadioButton;

namespace bm {

// A frame of option buttons that shows one OptionGroup. The buttons are named
// name(0), name(1), ...
class OptionFrame : public QGroupBox {
    Q_OBJECT
public:
    OptionFrame(const QString& title, const QString& frameName, const QString& optionName, OptionGroup& group,
                int buttonCount, QWidget* parent = nullptr);
    // Shows the group's captions (a button without one is hidden) and its choice.
    void refresh();
    QRadioButton* button(int index) const { return buttons_.value(index); }

signals:
    void chosen(int index);

private:
    OptionGroup& group_;
    QList<QRadioButton*> buttons_;
};

class NewModelDialogBase : public QDialog {
    Q_OBJECT
public:
    explicit NewModelDialogBase(QWidget* parent);

protected:
    // Adds the menu bar (menuFile with menuFileReturn and menuFileExt, menuHelp) and the OK and Cancel buttons.
    void finishLayout();
    virtual void confirm() = 0;
    void keyPressEvent(QKeyEvent* event) override;
    void showDialogHelp();
};

class NewFileDialog : public NewModelDialogBase {
    Q_OBJECT
public:
    explicit NewFileDialog(QWidget* parent = nullptr);
    NewFileForm& form() { return form_; }

protected:
    void confirm() override;

private:
    NewFileForm form_;
    OptionFrame *modelType_, *aquifer_, *contaminant_, *chemicals_;
};

class UnsaturatedNewFileDialog : public NewModelDialogBase {
    Q_OBJECT
public:
    explicit UnsaturatedNewFileDialog(QWidget* parent = nullptr);
    UnsaturatedNewFileForm& form() { return form_; }

protected:
    void confirm() override;

private:
    UnsaturatedNewFileForm form_;
};

class TimeVaryingNewDialog : public NewModelDialogBase {
    Q_OBJECT
public:
    explicit TimeVaryingNewDialog(QWidget* parent = nullptr);
    TimeVaryingNewForm& form() { return form_; }

protected:
    void confirm() override;

private:
    TimeVaryingNewForm form_;
};

}  // namespace bm
