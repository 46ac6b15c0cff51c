// SPDX-License-Identifier: MIT
#include "common/zvcadprintpreviewdialog.h"

#include "common/zvprintpreviewwidget.h"
#include "private/zvbagreader.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleValidator>
#include <QGuiApplication>
#include <QIcon>
#include <QLineEdit>
#include <QLocale>
#include <QMainWindow>
#include <QPrintPreviewDialog>
#include <QScreen>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

enum Result { kClose = 2, kPrint = 6 };

constexpr double kZoomIn = 1.1;
constexpr double kZoomOut = 0.9090909090909091;
constexpr int kRepeatMs = 200;
constexpr float kMinPercent = 1.0f;
constexpr float kMaxPercent = 1000.0f;
constexpr int kFactorLength = 5; // "1000%"

// The percentages of the zoom box, doubled: the first is 12.5.
constexpr int kZoomHalves[] = {25, 50, 100, 200, 250, 300, 400, 800, 1600};

const QLatin1Char kPercent('%');

/// Takes a percentage with or without its sign.
class ZoomFactorValidator : public QDoubleValidator
{
public:
    explicit ZoomFactorValidator(QObject *parent)
        : QDoubleValidator(double(kMinPercent), double(kMaxPercent), 1, parent)
    {
    }
    State validate(QString &input, int &pos) const override
    {
        const bool hasSign = input.endsWith(kPercent);
        if (hasSign)
            input.chop(1);
        State state = QDoubleValidator::validate(input, pos);
        if (hasSign)
            input += kPercent;
        if (state == Intermediate) {
            const int point = input.indexOf(QLocale::system().decimalPoint());
            const bool isShort = point == -1 ? input.size() < kFactorLength : point < kFactorLength;
            state = isShort ? Intermediate : Invalid;
        }
        return state;
    }
};

/// Goes back to its last good text when it is left with another.
class LineEdit : public QLineEdit
{
public:
    explicit LineEdit(QWidget *parent = nullptr) : QLineEdit(parent)
    {
        setContextMenuPolicy(Qt::NoContextMenu);
        connect(this, &QLineEdit::returnPressed, this, &LineEdit::keepText);
    }

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        keepText();
        QLineEdit::focusInEvent(event);
    }
    void focusOutEvent(QFocusEvent *event) override
    {
        if (isModified() && !hasAcceptableInput())
            setText(m_origText);
        QLineEdit::focusOutEvent(event);
    }

private:
    void keepText() { m_origText = text(); }

    QString m_origText;
};

/// Its tool bar has no context menu.
class QCadPrintPreviewMainWindow : public QMainWindow
{
public:
    using QMainWindow::QMainWindow;
    QMenu *createPopupMenu() override { return nullptr; }
};

/// From the pictures that Qt's print support library carries for a preview dialog of its own. That the folder's name is
/// taken from its class keeps the library linked, of which nothing else is used.
QIcon previewIcon(const char *name)
{
    const QString folder = QString::fromLatin1(QPrintPreviewDialog::staticMetaObject.className()).toLower();
    const QString path
        = QStringLiteral(":/qt-project.org/dialogs/%1/images/%2-%3.png").arg(folder, QLatin1String(name));
    QIcon icon;
    for (const int size : {24, 32})
        icon.addFile(path.arg(size), QSize(size, size));
    return icon;
}

QString zoomText(double percent)
{
    return ZvCadPrintPreviewDialog::tr("%1%").arg(percent);
}

} // namespace

/// An object, so that the connections to it end before the widgets do: a box that has the focus tells of its end.
class ZvCadPrintPreviewDialogPrivate : public QObject
{
public:
    explicit ZvCadPrintPreviewDialogPrivate(ZvCadPrintPreviewDialog *owner) : q(owner) { setupUi(); }

    void setupUi();
    void makeActions();
    void makeZoomBox();
    QToolBar *makeToolBar();
    void setUpWindow();
    void fit(QAction *action);
    bool isFitting() const { return fitGroup->isExclusive(); }
    void setFitting(bool on);
    void zoomFactorChanged();
    void showZoom();

    ZvCadPrintPreviewDialog *q;
    ZvPrintPreviewWidget *preview = nullptr;
    QComboBox *zoomFactor = nullptr;
    QActionGroup *fitGroup = nullptr;
    QAction *fitWidthAction = nullptr;
    QAction *fitPageAction = nullptr;
    QActionGroup *zoomGroup = nullptr;
    QAction *zoomInAction = nullptr;
    QAction *zoomOutAction = nullptr;
    QActionGroup *printerGroup = nullptr;
    QAction *printAction = nullptr;
    QAction *closeAction = nullptr;
};

void ZvCadPrintPreviewDialogPrivate::setupUi()
{
    preview = new ZvPrintPreviewWidget(q);
    makeActions();
    makeZoomBox();
    auto *window = new QCadPrintPreviewMainWindow(q);
    window->setWindowFlags(Qt::Widget);
    window->addToolBar(makeToolBar());
    window->setCentralWidget(preview);
    auto *column = new QVBoxLayout(q);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(window);
    connect(preview, &ZvPrintPreviewWidget::scaleChanged, this, &ZvCadPrintPreviewDialogPrivate::showZoom);
    connect(preview, &ZvPrintPreviewWidget::zoomed, this, [this] { setFitting(false); });
    setUpWindow();
}

void ZvCadPrintPreviewDialogPrivate::makeActions()
{
    fitGroup = new QActionGroup(q);
    zoomGroup = new QActionGroup(q);
    printerGroup = new QActionGroup(q);
    const auto make = [](QActionGroup *group, const char *text, const char *icon) {
        auto *action = group->addAction(QCoreApplication::translate("ZvCadPrintPreviewDialog", text));
        action->setIcon(previewIcon(icon));
        return action;
    };
    fitWidthAction = make(fitGroup, QT_TRANSLATE_NOOP("ZvCadPrintPreviewDialog", "窗口缩放"), "fit-width");
    fitWidthAction->setObjectName(QStringLiteral("fitWidthAction"));
    fitWidthAction->setCheckable(true);
    fitPageAction = make(fitGroup, QT_TRANSLATE_NOOP("ZvCadPrintPreviewDialog", "缩放为原窗口"), "fit-page");
    fitPageAction->setObjectName(QStringLiteral("fitPageAction"));
    fitPageAction->setCheckable(true);
    fitPageAction->setChecked(true);
    zoomInAction = make(zoomGroup, QT_TRANSLATE_NOOP("ZvCadPrintPreviewDialog", "放大"), "zoom-in");
    zoomOutAction = make(zoomGroup, QT_TRANSLATE_NOOP("ZvCadPrintPreviewDialog", "缩小"), "zoom-out");
    printAction = make(printerGroup, QT_TRANSLATE_NOOP("ZvCadPrintPreviewDialog", "打印"), "print");
    closeAction = make(printerGroup, QT_TRANSLATE_NOOP("ZvCadPrintPreviewDialog", "关闭"),
                       "go-next"); // there is no icon of its own for closing

    connect(fitGroup, &QActionGroup::triggered, this, &ZvCadPrintPreviewDialogPrivate::fit);
    connect(printAction, &QAction::triggered, this, [this] { q->endDialog(kPrint); });
    connect(closeAction, &QAction::triggered, this, [this] { q->endDialog(kClose); });
}

void ZvCadPrintPreviewDialogPrivate::makeZoomBox()
{
    zoomFactor = new QComboBox;
    zoomFactor->setEditable(true);
    zoomFactor->setMinimumContentsLength(7);
    zoomFactor->setInsertPolicy(QComboBox::NoInsert);
    auto *edit = new LineEdit;
    zoomFactor->setLineEdit(edit);
    zoomFactor->setValidator(new ZoomFactorValidator(edit));
    for (const int halves : kZoomHalves)
        zoomFactor->addItem(zoomText(halves / 2.0), halves);
    // A pick from the list only puts its text into the editor: as typed text it counts when the editor is left or Enter
    // is pressed.
    connect(edit, &QLineEdit::editingFinished, this, &ZvCadPrintPreviewDialogPrivate::zoomFactorChanged);
}

QToolBar *ZvCadPrintPreviewDialogPrivate::makeToolBar()
{
    auto *bar = new QToolBar(q);
    bar->addAction(fitWidthAction);
    bar->addAction(fitPageAction);
    bar->addSeparator();
    bar->addWidget(zoomFactor);
    bar->addAction(zoomOutAction);
    bar->addAction(zoomInAction);
    bar->addSeparator();
    bar->addAction(printAction);
    bar->addAction(closeAction);

    // A tool bar keeps the keyboard from its buttons; here there is no menu that has the same commands.
    const QList<QToolButton *> buttons = bar->findChildren<QToolButton *>();
    for (QToolButton *button : buttons)
        button->setFocusPolicy(Qt::TabFocus);
    zoomFactor->setAccessibleName(QCoreApplication::translate("ZvAccessibility", "Zoom"));
    preview->setAccessibleName(QCoreApplication::translate("ZvAccessibility", "Page"));

    struct Repeating
    {
        QAction *action;
        double factor;
    };
    for (const Repeating &zoom : {Repeating{zoomInAction, kZoomIn}, Repeating{zoomOutAction, kZoomOut}}) {
        auto *button = static_cast<QToolButton *>(bar->widgetForAction(zoom.action));
        button->setAutoRepeat(true);
        button->setAutoRepeatInterval(kRepeatMs);
        button->setAutoRepeatDelay(kRepeatMs);
        connect(button, &QToolButton::clicked, this, [this, factor = zoom.factor] { preview->zoomBy(factor); });
    }
    return bar;
}

void ZvCadPrintPreviewDialogPrivate::setUpWindow()
{
    q->setWindowTitle(ZvCadPrintPreviewDialog::tr("Print Preview"));
    q->setWindowFlag(Qt::Dialog);
    q->setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        q->resize(screen->availableGeometry().size());
    q->setMinimumSize(100, 100);
    q->setWindowState(Qt::WindowFullScreen); // last: a resize would end it
    preview->setFocus();
}

void ZvCadPrintPreviewDialogPrivate::fit(QAction *action)
{
    setFitting(true);
    if (action == fitPageAction)
        preview->fitPage();
    else
        preview->fitWidth();
}

void ZvCadPrintPreviewDialogPrivate::setFitting(bool on)
{
    if (isFitting() == on)
        return;
    fitGroup->setExclusive(on);
    if (!on) {
        fitWidthAction->setChecked(false);
        fitPageAction->setChecked(false);
        return;
    }
    QAction *action = fitWidthAction->isChecked() ? fitWidthAction : fitPageAction;
    action->setChecked(true);
    if (fitGroup->checkedAction() != action) {
        // The group does not take note of what was checked while it was not exclusive.
        fitGroup->removeAction(action);
        fitGroup->addAction(action);
    }
}

void ZvCadPrintPreviewDialogPrivate::zoomFactorChanged()
{
    QString text = zoomFactor->lineEdit()->text();
    bool isNumber = false;
    const float typed = text.remove(kPercent).toFloat(&isNumber);
    if (!isNumber)
        return;
    const float percent = std::min(std::max(typed, kMinPercent), kMaxPercent);
    preview->zoomToPercent(double(percent));
    zoomFactor->setEditText(zoomText(double(percent)));
    setFitting(false);
}

void ZvCadPrintPreviewDialogPrivate::showZoom()
{
    zoomFactor->setEditText(QString::asprintf("%.1f%%", preview->pixelScalePercent()));
}

ZvCadPrintPreviewDialog::ZvCadPrintPreviewDialog(ZvQtUIModeDialogBase *owner, QWidget *parent, Qt::WindowFlags flags)
    : ZvQtModeDialogImpl(owner, parent, flags), d(std::make_unique<ZvCadPrintPreviewDialogPrivate>(this))
{
}

ZvCadPrintPreviewDialog::~ZvCadPrintPreviewDialog() = default;

bool ZvCadPrintPreviewDialog::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    ZvQtModeDialogImpl::onInit(params, helper);
    d->preview->setPage(params);
    d->fit(d->fitPageAction);
    d->printAction->setEnabled(zvBagBool(params, "enable_print", false));
    return true;
}
