#pragma once
// The small information screens: aboutform (with its credits page),
// frmDeclaimer and OTSForm.

#include <QDialog>

namespace bm {

inline constexpr const char* kAboutCaption = "ORVA Version 9.1 for Microsoft Windows";

class AboutForm : public QDialog {
    Q_OBJECT
public:
    explicit AboutForm(QWidget* parent = nullptr);
};

class CreditsForm : public QDialog {
    Q_OBJECT
public:
    explicit CreditsForm(QWidget* parent = nullptr);
};

class DisclaimerForm : public QDialog {
    Q_OBJECT
public:
    explicit DisclaimerForm(QWidget* parent = nullptr);
};

class SupportForm : public QDialog {
    Q_OBJECT
public:
    explicit SupportForm(QWidget* parent = nullptr);
};

}  // namespace bm
