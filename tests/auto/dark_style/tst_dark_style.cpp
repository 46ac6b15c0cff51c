// SPDX-License-Identifier: MIT
// Every widget and dialog of the library with light texts on a dark ground: what is written can be read.
#include "everywidget.h"
#include "look.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <cmath>

namespace {

constexpr double kReadable = 4.5; // the usual demand on small letters
constexpr double kLeast
    = 3.0; // of texts in a colour of their own, which no palette changes: the task dialog's commands

double luminance(QRgb color)
{
    const auto linear = [](int component) {
        const double value = component / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

double contrast(QRgb a, QRgb b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return first > second ? first / second : second / first;
}

/// Between the colour that fills most of the picture and the one in it that stands out most: the ground and the strokes
/// of the letters.
double contrastIn(const QImage &picture)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    QRgb ground = 0;
    int most = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > most) {
            most = it.value();
            ground = it.key();
        }
    }
    double best = 1;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        best = std::max(best, contrast(ground, it.key()));
    return best;
}

/// The rectangle of the widget that its text stands in, without frames and icons; empty for one without a text.
QRect textArea(const QWidget *widget)
{
    constexpr int kFrame = 4;
    const QRect inside = widget->rect().adjusted(kFrame, kFrame, -kFrame, -kFrame);
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text().isEmpty() ? QRect() : widget->rect();
    if (const auto *check = qobject_cast<const QCheckBox *>(widget))
        return check->text().isEmpty() ? QRect() : inside.adjusted(20, 0, 0, 0);
    if (const auto *tool = qobject_cast<const QToolButton *>(widget))
        return tool->toolButtonStyle() == Qt::ToolButtonIconOnly || tool->text().isEmpty() ? QRect() : inside;
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text().isEmpty() ? QRect() : inside;
    if (const auto *edit = qobject_cast<const QLineEdit *>(widget))
        return edit->text().isEmpty() ? QRect() : inside;
    if (const auto *group = qobject_cast<const QGroupBox *>(widget))
        return group->title().isEmpty() ? QRect() : QRect(0, 0, widget->width() / 2, widget->fontMetrics().height());
    return QRect();
}

} // namespace

Q_DECLARE_METATYPE(const EveryWidget::Maker *)

class TestDarkStyle : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void lightOnLightIsFound();
    void textsCanBeRead_data();
    void textsCanBeRead();
    void listsCanBeRead_data();
    void listsCanBeRead();

private:
    static void checkTexts(QWidget *window);
};

void TestDarkStyle::initTestCase()
{
    applyLook(*qApp, Look::kDark);
    QVERIFY(qGray(QApplication::palette().color(QPalette::Window).rgb()) < 80);
}

void TestDarkStyle::cleanupTestCase()
{
    qApp->setStyleSheet(QString());
    zevaPinApplication();
}

/// The test can fail.
void TestDarkStyle::lightOnLightIsFound()
{
    QLabel label(QStringLiteral("unreadable"));
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, palette.color(QPalette::Window).lighter(130));
    label.setPalette(palette);
    QVERIFY(contrastIn(label.grab().toImage()) < kReadable);
    label.setPalette(QPalette());
    QVERIFY(contrastIn(label.grab().toImage()) >= kReadable);
}

void TestDarkStyle::textsCanBeRead_data()
{
    QTest::addColumn<const EveryWidget::Maker *>("maker");
    for (const EveryWidget::Maker &maker : EveryWidget::all())
        QTest::newRow(maker.name) << &maker;
}

void TestDarkStyle::checkTexts(QWidget *window)
{
    const QList<QWidget *> widgets = window->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const QRect area = textArea(widget);
        if (!widget->isVisible() || !widget->isEnabled() || area.isEmpty())
            continue;
        // As it stands in its window, with whatever lies under it.
        const QPoint place = widget->mapTo(window, area.topLeft());
        const double found = contrastIn(window->grab(QRect(place, area.size())).toImage());
        const QVariant text = widget->property("text");
        const bool hasOwnColor = widget->styleSheet().contains(QLatin1String("rgb(0, 116, 216)"));
        QVERIFY2(found >= (hasOwnColor ? kLeast : kReadable),
                 qPrintable(QStringLiteral("%1 \"%2\": %3")
                                .arg(QLatin1String(widget->metaObject()->className()), text.toString())
                                .arg(found)));
    }
}

void TestDarkStyle::textsCanBeRead()
{
    QFETCH(const EveryWidget::Maker *, maker);
    const EveryWidget made(*maker);
    QVERIFY(made.show());
    checkTexts(made.window());
    if (auto *tabs = made.window()->findChild<QTabWidget *>()) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            checkTexts(made.window());
            const QRect title = tabs->tabBar()->tabRect(tab).adjusted(6, 6, -6, -4);
            const QPoint place = tabs->tabBar()->mapTo(made.window(), title.topLeft());
            QVERIFY(contrastIn(made.window()->grab(QRect(place, title.size())).toImage()) >= kReadable);
        }
    }
}

void TestDarkStyle::listsCanBeRead_data()
{
    QTest::addColumn<const EveryWidget::Maker *>("maker");
    for (const EveryWidget::Maker &maker : EveryWidget::all()) {
        const bool isList = maker.kind == EveryWidget::kControl && QByteArray(maker.name) != "shade plot"
            && QByteArray(maker.name) != "hatch name" && QByteArray(maker.name) != "block";
        if (isList)
            QTest::newRow(maker.name) << &maker;
    }
}

void TestDarkStyle::listsCanBeRead()
{
    QFETCH(const EveryWidget::Maker *, maker);
    addLayer(L"walls");
    const EveryWidget made(*maker);
    auto *combo = qobject_cast<QComboBox *>(made.widget());
    if (!combo)
        return; // no list
    QVERIFY(made.show());
    combo->showPopup();
    QTRY_VERIFY(combo->view()->isVisible());
    const QAbstractItemView *view = combo->view();
    QWidget *list = combo->view()->viewport();
    for (int row = 0; row < combo->count(); ++row) {
        const int textColumn = view->model()->columnCount(view->rootIndex()) - 1;
        const QRect cell = view->visualRect(view->model()->index(row, textColumn, view->rootIndex()));
        // The text stands at the right of the picture.
        const QRect text = cell.adjusted(combo->itemIcon(row).isNull() ? 4 : combo->iconSize().width() + 8, 2, -2, -2);
        if (!(text & list->rect()).isValid() || !list->rect().contains(text))
            continue;
        const double found = contrastIn(list->grab(text).toImage());
        QVERIFY2(found >= kReadable, qPrintable(QStringLiteral("row %1: %2").arg(row).arg(found)));
    }
    combo->hidePopup();
}

ZEVA_TEST_MAIN(TestDarkStyle)
#include "tst_dark_style.moc"
