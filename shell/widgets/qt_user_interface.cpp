#include "shell/widgets/qt_user_interface.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>

namespace bm {

std::vector<FilterEntry> parseFilterList(const std::string& filter) {
    std::vector<std::string> parts;
    std::string part;
    for (char c : filter) {
        if (c == '|') {
            parts.push_back(part);
            part.clear();
        } else {
            part += c;
        }
    }
    if (!part.empty()) parts.push_back(part);
    std::vector<FilterEntry> out;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2)
        if (!parts[i].empty()) out.push_back({parts[i], parts[i + 1]});
    return out;
}

QString qtNameFilter(const FilterEntry& entry) {
    QStringList patterns;
    for (const QString& p : QString::fromStdString(entry.patterns).split(u';', Qt::SkipEmptyParts)) {
        const QString t = p.trimmed();
        if (t.isEmpty()) continue;
        patterns << (t == QLatin1String("*.*") ? QStringLiteral("*") : t);
    }
    if (patterns.isEmpty()) patterns << QStringLiteral("*");
    QString caption = QString::fromStdString(entry.caption);
    // Qt takes the patterns from the brackets at the end of the caption.
    if (caption.endsWith(u')')) {
        const auto open = caption.lastIndexOf(u'(');
        if (open >= 0) caption.truncate(open);
    } else {
        caption += u' ';
    }
    return caption + u'(' + patterns.join(u' ') + u')';
}

QStringList qtNameFilters(const std::string& filter) {
    QStringList out;
    for (const auto& e : parseFilterList(filter)) out << qtNameFilter(e);
    return out;
}

QtUserInterface::~QtUserInterface() {
    if (busy_ && QCoreApplication::instance()) QApplication::restoreOverrideCursor();
}

QWidget* QtUserInterface::dialogParent() const {
    if (QWidget* w = QApplication::activeModalWidget()) return w;
    if (QWidget* w = QApplication::activeWindow()) return w;
    return mainWindow_;
}

namespace {

QString boxText(const std::string& text) {
    QString t = QString::fromStdString(text);
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    t.replace(u'\r', u'\n');
    return t;
}

struct ButtonSet {
    std::vector<std::pair<QMessageBox::StandardButton, MessageAnswer>> buttons;
    QMessageBox::StandardButton escape;
};

ButtonSet buttonsOf(MessageButtons b) {
    using SB = QMessageBox::StandardButton;
    switch (b) {
    case MessageButtons::OkCancel:
        return {{{SB::Ok, MessageAnswer::Ok}, {SB::Cancel, MessageAnswer::Cancel}}, SB::Cancel};
    case MessageButtons::AbortRetryIgnore:
        return {{{SB::Abort, MessageAnswer::Abort}, {SB::Retry, MessageAnswer::Retry}, {SB::Ignore, MessageAnswer::Ignore}},
                SB::Abort};
    case MessageButtons::YesNoCancel:
        return {{{SB::Yes, MessageAnswer::Yes}, {SB::No, MessageAnswer::No}, {SB::Cancel, MessageAnswer::Cancel}},
                SB::Cancel};
    case MessageButtons::YesNo:
        return {{{SB::Yes, MessageAnswer::Yes}, {SB::No, MessageAnswer::No}}, SB::No};
    case MessageButtons::RetryCancel:
        return {{{SB::Retry, MessageAnswer::Retry}, {SB::Cancel, MessageAnswer::Cancel}}, SB::Cancel};
    case MessageButtons::Ok:
    default:
        return {{{SB::Ok, MessageAnswer::Ok}}, SB::Ok};
    }
}

QMessageBox::Icon iconOf(MessageIcon i) {
    switch (i) {
    case MessageIcon::Critical: return QMessageBox::Critical;
    case MessageIcon::Question: return QMessageBox::Question;
    case MessageIcon::Exclamation: return QMessageBox::Warning;
    case MessageIcon::Information: return QMessageBox::Information;
    case MessageIcon::None:
    default: return QMessageBox::NoIcon;
    }
}

}  // namespace

MessageAnswer QtUserInterface::showMessage(const MessageRequest& request) {
    if (log_) {
        std::fprintf(log_, "%s: %s\n", request.title.c_str(), flattenMessageText(request.text).c_str());
        std::fflush(log_);
        return defaultAnswer(request);
    }
    const bool wasBusy = busy_;
    if (wasBusy) QApplication::restoreOverrideCursor();  // a box is answered with the normal pointer
    QMessageBox box(iconOf(request.icon), QString::fromStdString(request.title), boxText(request.text),
                    QMessageBox::NoButton, dialogParent());
    box.setObjectName(QStringLiteral("messageBox"));
    const ButtonSet set = buttonsOf(request.buttons);
    const int def = request.defaultButton < 0 || request.defaultButton >= static_cast<int>(set.buttons.size())
                        ? 0
                        : request.defaultButton;
    for (std::size_t i = 0; i < set.buttons.size(); ++i) {
        QPushButton* b = box.addButton(set.buttons[i].first);
        if (static_cast<int>(i) == def) box.setDefaultButton(b);
    }
    box.setEscapeButton(box.button(set.escape));
    box.exec();
    if (wasBusy) QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto clicked = box.standardButton(box.clickedButton());
    for (const auto& [button, answer] : set.buttons)
        if (button == clicked) return answer;
    // Closed by the window's button: the escape button's answer.
    for (const auto& [button, answer] : set.buttons)
        if (button == set.escape) return answer;
    return defaultAnswer(request);
}

std::optional<std::string> QtUserInterface::askFile(const FileDialogRequest& request) {
    if (log_) return std::nullopt;
    QFileDialog dialog(dialogParent(), QString::fromStdString(request.title),
                       QString::fromStdString(request.initialDirectory));
    dialog.setObjectName(QStringLiteral("CMDialog1"));
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    const QStringList filters = qtNameFilters(request.filter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        const int index = request.filterIndex >= 1 && request.filterIndex <= filters.size() ? request.filterIndex : 1;
        dialog.selectNameFilter(filters.at(index - 1));
    }
    if (request.kind == FileDialogRequest::Kind::Open) {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        // The program asks its own question about an existing file.
        dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    }
    QString suffix = QString::fromStdString(request.defaultExtension);
    while (suffix.startsWith(u'.')) suffix.remove(0, 1);
    if (!suffix.isEmpty()) dialog.setDefaultSuffix(suffix);
    const QString name = QString::fromStdString(request.initialFileName);
    if (!name.isEmpty() && !name.contains(u'*') && !name.contains(u'?')) dialog.selectFile(name);
    const bool wasBusy = busy_;
    if (wasBusy) QApplication::restoreOverrideCursor();
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (wasBusy) QApplication::setOverrideCursor(Qt::WaitCursor);
    if (!accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().constFirst().toStdString();
}

void QtUserInterface::setBusy(bool busy) {
    if (busy == busy_) return;
    busy_ = busy;
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtUserInterface::setProgressSink(ProgressOwner owner, std::function<void(double, double)> sink) {
    if (sink)
        sinks_[owner] = std::move(sink);
    else
        sinks_.erase(owner);
}

void QtUserInterface::reportProgress(ProgressOwner owner, double total, double done) {
    if (const auto it = sinks_.find(owner); it != sinks_.end()) it->second(total, done);
    QCoreApplication::processEvents();
}

void QtUserInterface::processEvents() { QCoreApplication::processEvents(); }

bool QtUserInterface::startProgram(const std::string& program, const std::vector<std::string>& arguments) {
    QStringList args;
    for (const auto& a : arguments) args << QString::fromStdString(a);
    return QProcess::startDetached(QString::fromStdString(program), args);
}

QtUserInterface& qtUserInterface() {
    static QtUserInterface instance;
    return instance;
}

}  // namespace bm
