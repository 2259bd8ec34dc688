#include "frmSplash.h"

#include "SplashPicture.h"
#include "Version.h"
#include "settings/Texts.h"
#include "ui/common/CaptionLabel.h"
#include "ui/common/DesignFont.h"
#include "ui/common/ImageList.h"
#include "ui/common/Named.h"
#include "ui/common/Twips.h"
#include "ui/main/SavedPlacement.h"
#include "ui/main/frmMain.h"
#include "ui/panel/WebPanel.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include <utility>

namespace zentoria {

namespace {

constexpr double kWidth = 7485;
// The height of a splash; a closing window of this height shows the main window.
constexpr double kHeight = 4980;

CaptionLabel* label(QWidget* parent, const char* name, const QRectF& twips, const QColor& colour) {
    auto* made = named(new CaptionLabel(parent), name);
    setGeometryTwips(made, twips.x(), twips.y(), twips.width(), twips.height());
    QPalette palette = made->palette();
    palette.setColor(QPalette::WindowText, colour);
    made->setPalette(palette);
    return made;
}

} // namespace

frmSplash::frmSplash(frmMain* main)
    : QWidget(main, Qt::SplashScreen | Qt::FramelessWindowHint)
    , m_main(main) {
    setObjectName(QStringLiteral("frmSplash"));
    setAttribute(Qt::WA_DeleteOnClose);
    createControls();
    Form_Load();
}

void frmSplash::createControls() {
    // Light orange (red in the lowest byte: &H0080C0FF) and black, 35 twips apart: a shadowed text.
    const QColor colours[2] = {QColor(0xff, 0xc0, 0x80), Qt::black};
    for (int index = 0; index < 2; ++index) {
        LabVers[index] =
            label(this, "LabVers", QRectF(5280 + 35 * index, 1060 + 10 * index, 1200, 285), colours[index]);
        LabVers[index]->setProperty("index", index);
        LabVers[index]->setFont(designBoldFont(8.25));
        LabVers[index]->setAlignment(Qt::AlignRight | Qt::AlignTop);
        LabVers[index]->setCaption(QStringLiteral("Ver.:1.4"));
    }

    lblProgress = label(this, "lblProgress", QRectF(1920, 4755, 5445, 195), QColor(0, 0, 0xff));
    lblProgress->setAlignment(Qt::AlignRight | Qt::AlignTop);
    lblProgress->hide();
    connect(lblProgress, &CaptionLabel::captionChanged, this, &frmSplash::lblProgress_Change);

    CloseIt = named(new QTimer(this), "CloseIt");
    CloseIt->setInterval(500);
    CloseIt->setSingleShot(true);
    connect(CloseIt, &QTimer::timeout, this, &QWidget::close);

    // The band below the shown height: it lies outside the window, but its captions are the
    // language's, and its Ok button has the keyboard, so Enter and Space close the splash.
    lblProgrammed = label(this, "lblProgrammed", QRectF(120, 5040, 2400, 195), Qt::black);
    lblMail = label(this, "lblMail", QRectF(120, 5280, 2400, 195), Qt::black);
    lblICQ = label(this, "lblICQ", QRectF(120, 5520, 2400, 195), Qt::black);
    cmdHistory = named(new QPushButton(this), "cmdHistory");
    setGeometryTwips(cmdHistory, 4800, 5520, 1215, 375);
    cmdOk = named(new QPushButton(this), "cmdOk");
    setGeometryTwips(cmdOk, 6120, 5520, 1215, 375);
    cmdOk->setAutoDefault(true);
    connect(cmdOk, &QPushButton::clicked, this, &QWidget::close);
    frmTranslation = named(new QGroupBox(this), "frmTranslation");
    setGeometryTwips(frmTranslation, 120, 6000, 7215, 975);
    lblTranslatedBy = label(frmTranslation, "lblTranslatedBy", QRectF(120, 240, 6900, 195), Qt::black);
    lblTranslator = label(frmTranslation, "lblTranslator", QRectF(120, 600, 6900, 195), Qt::black);
    setTabOrder(cmdOk, cmdHistory);
    cmdOk->setFocus();
}

void frmSplash::Form_Load() {
    lblProgrammed->setCaption(uiText(txt::ProgrammedBy));
    lblMail->setCaption(uiText(txt::Email));
    lblICQ->setCaption(uiText(txt::ICQ));
    cmdHistory->setText(uiText(txt::HistoryButton));
    cmdOk->setText(uiText(txt::OkButton));
    const QString translatedBy = uiText(txt::TranslatedBy);
    frmTranslation->setVisible(!translatedBy.isEmpty());
    lblTranslatedBy->setCaption(translatedBy);
    frmTranslation->setTitle(uiText(txt::Title));
    lblTranslator->setCaption(uiText(txt::Translator));
}

void frmSplash::ShowSplash(bool Caller) {
    Q_UNUSED(Caller); // the program shows its splash only at start-up
    setGeometryTwips(this, 0, 0, kWidth, kHeight);
    lblProgress->show();
    QCoreApplication::processEvents();

    LabVers[0]->setCaption(QStringLiteral("Ver.:%1.%2.%3")
                               .arg(ZENTORIA_VERSION_MAJOR)
                               .arg(ZENTORIA_VERSION_MINOR)
                               .arg(ZENTORIA_VERSION_PATCH));
    LabVers[1]->setCaption(LabVers[0]->caption());

    // Centred on the screen the main window will open on.
    if (const QScreen* screen = screenOfSavedPlacement()) {
        const double dpi = screen->logicalDotsPerInchX();
        const QRect area = screen->geometry();
        setGeometryTwips(this, pixelsToTwips(area.x(), dpi) + (pixelsToTwips(area.width(), dpi) - kWidth) / 2,
                         pixelsToTwips(area.y(), dpi) + (pixelsToTwips(area.height(), dpi) - kHeight) / 2,
                         kWidth, kHeight);
    }
    show();
    repaint();
}

void frmSplash::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawSplashPicture(painter);
}

void frmSplash::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        event->accept();
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void frmSplash::lblProgress_Change() {
    QCoreApplication::processEvents();
}

void frmSplash::closeEvent(QCloseEvent* event) {
    CloseIt->stop();
    event->accept();
    if (std::exchange(m_closed, true)) {
        return;
    }
    if (qAbs(geometryTwips(this).Height - kHeight) < 1) {
        showMainWindow();
    }
}

void frmSplash::showMainWindow() {
    // The panel's icon and title are already the program's: every report shown, the empty one of
    // start-up included, resets them.
    showAtSavedPlacement(m_main);
    m_main->ReDrawForm();
}

} // namespace zentoria
