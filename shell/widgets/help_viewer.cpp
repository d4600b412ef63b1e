#include "shell/widgets/help_viewer.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <functional>

#include "shell/base/common_services.h"
#include "shell/base/program_paths.h"
#include "shell/base/user_interface.h"

namespace bm {

HelpViewer::HelpViewer(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("helpViewer"));
    setWindowTitle(QStringLiteral("Ground Water Model Help"));
    auto* layout = new QHBoxLayout(this);
    auto* splitter = new QSplitter(this);
    tabs_ = new QTabWidget(splitter);
    tabs_->setObjectName(QStringLiteral("helpTabs"));
    contents_ = new QTreeWidget;
    contents_->setObjectName(QStringLiteral("helpContents"));
    contents_->setHeaderHidden(true);
    tabs_->addTab(contents_, QStringLiteral("Contents"));
    auto* indexPage = new QWidget;
    auto* indexLayout = new QVBoxLayout(indexPage);
    indexSearch_ = new QLineEdit;
    indexSearch_->setObjectName(QStringLiteral("helpIndexSearch"));
    indexSearch_->setPlaceholderText(QStringLiteral("Type the first letters of a word"));
    index_ = new QListWidget;
    index_->setObjectName(QStringLiteral("helpIndex"));
    indexLayout->addWidget(indexSearch_);
    indexLayout->addWidget(index_);
    tabs_->addTab(indexPage, QStringLiteral("Index"));
    page_ = new QTextBrowser(splitter);
    page_->setObjectName(QStringLiteral("helpPage"));
    page_->setOpenLinks(false);
    splitter->addWidget(tabs_);
    splitter->addWidget(page_);
    splitter->setStretchFactor(1, 3);
    layout->addWidget(splitter);
    resize(900, 600);

    connect(contents_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item) showTopic(item->data(0, Qt::UserRole).toInt());
    });
    connect(indexSearch_, &QLineEdit::textChanged, this, [this](const QString& t) { fillIndex(t); });
    connect(index_, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { showTopic(item->data(Qt::UserRole).toInt()); });
    connect(index_, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { showTopic(item->data(Qt::UserRole).toInt()); });
    connect(page_, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
        if (url.scheme() == QLatin1String("topic")) showTopic(url.path().toInt());
    });
}

bool HelpViewer::load(const std::string& path) {
    std::string error;
    file_ = loadHelpFile(path, &error);
    fillContents();
    fillIndex({});
    return file_.has_value();
}

void HelpViewer::fillContents() {
    contents_->clear();
    if (!file_) return;
    std::function<void(QTreeWidgetItem*, int, int)> add = [&](QTreeWidgetItem* parent, int context, int depth) {
        for (int child : file_->children(context)) {
            const HelpTopic* t = file_->find(child);
            auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(contents_);
            item->setText(0, QString::fromStdString(t->title));
            item->setData(0, Qt::UserRole, t->context);
            if (depth < 8) add(item, child, depth + 1);
        }
    };
    add(nullptr, 0, 0);
    contents_->expandAll();
}

void HelpViewer::fillIndex(const QString& start) {
    index_->clear();
    if (!file_) return;
    for (const auto& [word, context] : file_->indexEntries()) {
        const QString w = QString::fromStdString(word);
        if (!start.isEmpty() && !w.startsWith(start, Qt::CaseInsensitive)) continue;
        auto* item = new QListWidgetItem(w, index_);
        item->setData(Qt::UserRole, context);
    }
}

bool HelpViewer::showTopic(int context) {
    if (!file_) return false;
    const HelpTopic* t = file_->find(context);
    if (!t) return false;
    current_ = context;
    page_->setHtml(QStringLiteral("<h2>") + QString::fromStdString(t->title).toHtmlEscaped() +
                   QStringLiteral("</h2>") + QString::fromStdString(t->body));
    // Keep the contents tree on the topic shown.
    const auto items = contents_->findItems(QStringLiteral("*"), Qt::MatchWildcard | Qt::MatchRecursive);
    for (QTreeWidgetItem* item : items)
        if (item->data(0, Qt::UserRole).toInt() == context && contents_->currentItem() != item) {
            const QSignalBlocker block(contents_);
            contents_->setCurrentItem(item);
        }
    return true;
}

void HelpViewer::showContents() {
    tabs_->setCurrentIndex(0);
    if (file_ && !file_->topics.empty() && current_ == 0) showTopic(file_->topics.front().context);
}

void HelpViewer::showIndex() {
    tabs_->setCurrentIndex(1);
    indexSearch_->setFocus();
}

namespace {
std::string& helpPath() {
    static std::string path;
    return path;
}
QPointer<HelpViewer>& viewerInstance() {
    static QPointer<HelpViewer> viewer;
    return viewer;
}
}  // namespace

void setHelpFilePath(const std::string& path) { helpPath() = path; }
const std::string& helpFilePath() { return helpPath(); }
HelpViewer* helpViewer() { return viewerInstance().data(); }

bool showHelp(HelpCommand command, int context, QWidget* parent) {
    if (!fileExists(helpPath())) {
        ui().message(MessageIcon::Exclamation, MessageButtons::Ok, "Missing Program Files",
                     "Unable to locate ground water model help file " + helpPath() + "." + "\r\r" +
                         "For viewing online help, BRENMOOR.HLP must be present in the above directory.");
        return false;
    }
    auto& viewer = viewerInstance();
    // A viewer under another window would be blocked by a modal dialog: open it anew under the caller.
    if (viewer && viewer->parentWidget() != parent) delete viewer.data();
    if (!viewer) {
        viewer = new HelpViewer(parent);
        viewer->setAttribute(Qt::WA_DeleteOnClose);
        if (!viewer->load(helpPath())) {
            delete viewer.data();
            ui().message(MessageIcon::Exclamation, MessageButtons::Ok, "Help",
                         "The help file " + helpPath() + " is not in the help file format.");
            return false;
        }
    }
    switch (command) {
    case HelpCommand::Contents: viewer->showContents(); break;
    case HelpCommand::Index: viewer->showIndex(); break;
    case HelpCommand::Context:
        if (!viewer->showTopic(context)) viewer->showContents();
        break;
    }
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
    return true;
}

void closeHelp() {
    if (auto& viewer = viewerInstance()) viewer->close();
}

}  // namespace bm
