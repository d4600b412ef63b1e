#include "shell/widgets/info_dialogs.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace bm {

namespace {

QLabel* textLabel(const QString& html, QWidget* parent) {
    auto* l = new QLabel(html, parent);
    l->setWordWrap(true);
    l->setTextFormat(Qt::RichText);
    return l;
}

// Lays out a text screen: its named text, then the button row with OK. Returns the row.
QDialogButtonBox* layOutTextScreen(QDialog* screen, const char* textName, const QString& html, QSize size) {
    auto* layout = new QVBoxLayout(screen);
    auto* text = textLabel(html, screen);
    text->setObjectName(QString::fromLatin1(textName));
    layout->addWidget(text);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, screen);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("okCB"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, screen, &QDialog::accept);
    layout->addWidget(buttons);
    screen->resize(size);
    return buttons;
}

}  // namespace

AboutForm::AboutForm(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("aboutform"));
    setWindowTitle(QString::fromLatin1(kAboutCaption));
    auto* buttons = layOutTextScreen(this, "aboutText",
        QStringLiteral("<h3>Ground Water Contaminant Transport</h3>"
                       "<p>Version 9.1 of the ground water module of the ORVA suite.</p>"
                       "<p>Analytical solutions of the advection&ndash;dispersion equation for saturated flow in "
                       "one, two and three dimensions, decay chains of several chemicals, transport with "
                       "time-varying dispersion, one-dimensional unsaturated transport, and Monte Carlo "
                       "simulation of any of them.</p>"),
        QSize(460, 220));
    auto* credits = buttons->addButton(QStringLiteral("&Credits..."), QDialogButtonBox::ActionRole);
    credits->setObjectName(QStringLiteral("creditsCB"));
    connect(credits, &QPushButton::clicked, this, [this] {
        CreditsForm form(this);
        form.exec();
    });
}

CreditsForm::CreditsForm(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("creditsForm"));
    setWindowTitle(QStringLiteral("Credits"));
    layOutTextScreen(this, "creditsText",
        QStringLiteral("<p>The closed-form solutions rest on the classical literature of analytical "
                       "contaminant hydrogeology: the error-function solutions of the one-dimensional "
                       "advection&ndash;dispersion equation, eigenfunction series for aquifers of finite "
                       "length, Gauss&ndash;Legendre quadrature of the source integrals in two and three "
                       "dimensions, and the eigen decomposition of first-order decay chains.</p>"
                       "<p>Numerical checks, samples and help pages by the ground water model team.</p>"),
        QSize(440, 220));
}

DisclaimerForm::DisclaimerForm(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmDeclaimer"));
    setWindowTitle(QStringLiteral("Disclaimer"));
    layOutTextScreen(this, "disclaimerText",
        QStringLiteral("<p>This program computes relative concentrations from analytical solutions that "
                       "assume a homogeneous, isotropic aquifer, uniform steady flow and linear sorption and "
                       "decay. Real sites rarely meet these assumptions.</p>"
                       "<p>Results are screening estimates. They are offered without any warranty of accuracy "
                       "or fitness for a purpose, and they do not replace a site investigation or the "
                       "judgement of a qualified hydrogeologist. The user alone is responsible for the "
                       "input data and for any decision taken on the results.</p>"),
        QSize(460, 240));
}

SupportForm::SupportForm(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("OTSForm"));
    setWindowTitle(QStringLiteral("Obtaining Technical Support"));
    layOutTextScreen(this, "supportText",
        QStringLiteral("<p>Before you ask for help, please have ready:</p>"
                       "<ul><li>the version shown by Help, About (9.1);</li>"
                       "<li>the data file of the model (.one, .two, .tri, .mc1, .mc2, .mc3, .u1d, .mcu or "
                       ".var);</li>"
                       "<li>the exact text of any message box, and the steps that led to it.</li></ul>"
                       "<p>Technical support for the ORVA suite is given by the ground water model team of "
                       "your organisation's environmental modelling group. Send the items above to your "
                       "suite administrator, who keeps the contact address of the team.</p>"
                       "<p>Most questions about inputs, units and range texts are answered in the "
                       "online help (Help, Contents).</p>"),
        QSize(460, 300));
}

}  // namespace bm
