#include "shell/widgets/model_screens.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <map>

#include "model/data_set.h"
#include "shell/file_commands.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace {
std::map<ModelScreen, ModelScreenOpener>& registry() {
    static std::map<ModelScreen, ModelScreenOpener> openers;
    return openers;
}
}  // namespace

void registerModelScreen(ModelScreen screen, ModelScreenOpener opener) { registry()[screen] = std::move(opener); }

bool hasModelScreen(ModelScreen screen) { return registry().count(screen) != 0; }

void openModelScreen(QWidget* parent, ModelScreen screen, bool saveEnabled) {
    if (const auto it = registry().find(screen); it != registry().end() && it->second) {
        it->second(parent, saveEnabled);
        return;
    }
    PlaceholderModelScreen stand(screen, saveEnabled, parent);
    ui().setBusy(false);
    stand.exec();
}

bool closeModelScreen() {
    DataSet& data = theDataSet();
    if (!fileCommands().saveDataFilePrompt(data)) return false;
    closeModel(data, "Complete");
    return true;
}

QString PlaceholderModelScreen::describe(ModelScreen screen) {
    const DataSet& d = theDataSet();
    QString text = QStringLiteral("Model: ") + QString::fromStdString(d.modelType.empty() ? "(none)" : d.modelType);
    if (!d.aquiferType.empty()) {
        text += screen == ModelScreen::merlaform ? QStringLiteral("\nDispersion coefficient function: ")
                                                 : QStringLiteral("\nAquifer: ");
        text += QString::fromStdString(d.aquiferType);
    }
    if (!d.contaminantType.empty()) text += QStringLiteral("\nContaminant: ") + QString::fromStdString(d.contaminantType);
    text += d.multiChemical ? QStringLiteral("\nMultiple Chemicals") : QStringLiteral("\nSingle Chemical");
    if (!d.currentFileName.empty()) text += QStringLiteral("\nFile: ") + QString::fromStdString(d.currentFileName);
    return text;
}

PlaceholderModelScreen::PlaceholderModelScreen(ModelScreen screen, bool saveEnabled, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QString::fromLatin1(modelScreenName(screen)));
    setWindowTitle(QString::fromStdString(theDataSet().modelType.empty() ? std::string("Ground Water Model")
                                                                         : theDataSet().modelType + " Model"));
    auto* layout = new QVBoxLayout(this);
    auto* bar = new QMenuBar(this);
    auto* file = bar->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("menuFile"));
    auto* save = file->addAction(QStringLiteral("&Save"));
    save->setObjectName(QStringLiteral("menuSave"));
    save->setEnabled(false);  // this screen edits nothing
    auto* saveAs = file->addAction(QStringLiteral("Save &As..."));
    saveAs->setObjectName(QStringLiteral("menuSaveAs"));
    saveAs->setEnabled(false);
    file->addSeparator();
    auto* close = file->addAction(QStringLiteral("&Close"));
    close->setObjectName(QStringLiteral("menuClose"));
    connect(close, &QAction::triggered, this, &QDialog::accept);
    layout->setMenuBar(bar);
    (void)saveEnabled;

    auto* heading = new QLabel(QStringLiteral("<b>%1</b>").arg(QString::fromLatin1(modelScreenName(screen))), this);
    layout->addWidget(heading);
    auto* text = new QLabel(describe(screen), this);
    text->setObjectName(QStringLiteral("modelKindL"));
    layout->addWidget(text);
    auto* note = new QLabel(QStringLiteral("The input screen of this model is not part of this build."), this);
    note->setWordWrap(true);
    layout->addWidget(note);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("closeCB"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resize(420, 220);
}

void PlaceholderModelScreen::done(int result) {
    // Every way out of a model screen is its Close: the save question, then the model is closed.
    if (!closeModelScreen()) return;
    QDialog::done(result);
}

}  // namespace bm
