// SPDX-License-Identifier: MIT
#include "bagjson.h"
#include "colordialogdemo.h"
#include "combodriver.h"
#include "controlpages.h"
#include "controlpictures.h"
#include "controlsdriver.h"
#include "db/zvdbrecords.h"
#include "dialogpage.h"
#include "filedialogdemo.h"
#include "messageboxdemo.h"
#include "modaldriver.h"
#include "printpreviewdemo.h"
#include "taskdialogdemo.h"
#include "textforms.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvcolorcombobox.h"
#include "zvimagecombobox.h"
#include "zvimagevew.h"
#include "zvlayerultralcombobox.h"
#include "zvlinewidthcombobox.h"
#include "zvqtcontrolhelp.h"
#include "zvqtlinetypetableview.h"
#include "zvutilsiconpushbutton.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QJsonValue>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <memory>

namespace {

const char *const kSource = ZEVA_SAMPLES_DIR "/..";

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// Classes of the public headers that are widgets, by themselves or by a base class among them.
QStringList exportedWidgets()
{
    QHash<QString, QString> bases;
    const QDir headers(QString::fromUtf8(kSource) + QStringLiteral("/inc/qt"));
    for (const QString &name : headers.entryList({QStringLiteral("*.h")})) {
        static const QRegularExpression pattern(QStringLiteral("\\bclass ZV_EXPORT (\\w+)\\s*:\\s*public (\\w+)"));
        QRegularExpressionMatchIterator matches = pattern.globalMatch(contentOf(headers.filePath(name)));
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            bases.insert(match.captured(1), match.captured(2));
        }
    }
    static const QStringList widgets
        = {"QWidget", "QComboBox", "QPushButton", "QLabel", "QLineEdit", "QTextEdit", "QTableView", "QDialog"};
    QStringList found;
    for (auto at = bases.cbegin(); at != bases.cend(); ++at) {
        QString base = at.value();
        while (bases.contains(base))
            base = bases[base];
        if (widgets.contains(base))
            found << at.key();
    }
    return found;
}

QVector<DialogDemo> allDemos()
{
    return messageBoxDemos() + taskDialogDemos() + colorDialogDemos() + fileDialogDemos() + printPreviewDemos();
}

void pressEscape(QDialog *dialog)
{
    QTest::keyClick(dialog, Qt::Key_Escape);
}

ModalDriver::Action press(const QString &button)
{
    return [button](QDialog *dialog) {
        for (QPushButton *candidate : dialog->findChildren<QPushButton *>()) {
            if (candidate->text() == button)
                QTest::mouseClick(candidate, Qt::LeftButton);
        }
    };
}

/// The rows of a tree as "key=value", whatever they stand below.
QStringList rowsOf(const QTreeWidget &tree)
{
    QStringList rows;
    QTreeWidgetItemIterator at(const_cast<QTreeWidget *>(&tree));
    for (; *at; ++at)
        rows << (*at)->text(0) + QLatin1Char('=') + (*at)->text(2);
    return rows;
}

} // namespace

typedef std::function<void(ControlsDriver &)> Action;
Q_DECLARE_METATYPE(Action)

/// The window of controls: its list, its pages, their states, settings and logs, the dialogs' pages, and the pictures.
class tst_workbench_controls : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void everyExportedWidgetHasAPage();
    void everyPageOpens_data() { pages(); }
    void everyPageOpens();
    void everyPageOpensWithoutADrawing_data() { pages(); }
    void everyPageOpensWithoutADrawing();
    void searchHidesTheRest();
    void unknownPageChangesNothing();

    void boundControlsStandInTheirStates_data() { boundPages(); }
    void boundControlsStandInTheirStates();
    void hookedControlsShowTheDrawingAtOnce_data();
    void hookedControlsShowTheDrawingAtOnce();
    void theDrawingClosesWhileThePageIsOpen_data() { boundPages(); }
    void theDrawingClosesWhileThePageIsOpen();
    void anotherDrawingFillsTheListsAnew();

    void aUserActionIsLogged_data();
    void aUserActionIsLogged();
    void theLogIsCleared();
    void whatPaintsIsNotLogged_data();
    void whatPaintsIsNotLogged();
    void propertiesGoToAllControls();
    void settingsGoToAllControls();

    void examplesFillInTheirKeys_data();
    void examplesFillInTheirKeys();
    void everyDialogShowsItsResult_data();
    void everyDialogShowsItsResult();
    void keysAreFilledInByHand();
    void whatIsNoTreeIsTold();

    void picturesOfAllPagesAreWritten();
    void picturesNeedAFolder();
    void theDocumentsShowEveryPage();

private:
    static void pages()
    {
        QTest::addColumn<QString>("page");
        for (const QString &page : ControlsWindow::pageNames())
            QTest::newRow(qPrintable(page)) << page;
    }
    static void boundPages()
    {
        QTest::addColumn<QString>("page");
        const QVector<ControlPageData> all
            = propertyControlPages() + stylePages() + namedObjectPages() + ucsAndViewPages();
        for (const ControlPageData &data : all)
            QTest::newRow(data.className) << QString::fromLatin1(data.className);
    }
    bool openPlan()
    {
        ZvDbFileReport report;
        const bool isOpen
            = zvDocManagerPtr()->openDocument(toZvString(QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf")), report);
        QCoreApplication::processEvents();
        return isOpen;
    }
    void closeAll()
    {
        while (m_session->document()) {
            m_session->database().setModified(false);
            zvDocManagerPtr()->closeDocument(m_session->document());
        }
    }
    /// The control of the page in a state, by the end of its name.
    static QComboBox *inState(ControlsDriver &controls, const char *suffix)
    {
        for (QWidget *control : static_cast<ControlPage &>(controls.page()).controls()) {
            if (ControlPage::nameOf(*control).endsWith(QLatin1String(suffix)))
                return static_cast<QComboBox *>(control);
        }
        return nullptr;
    }
    static bool isHooked(QWidget *control) { return dynamic_cast<CZvQtControlHelp *>(control)->hooked; }

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_controls::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_controls::cleanup()
{
    closeAll();
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

// ---- the window

void tst_workbench_controls::everyExportedWidgetHasAPage()
{
    const QStringList widgets = exportedWidgets();
    QVERIFY(widgets.size() >= 33);
    const QStringList pages = ControlsWindow::pageNames();
    // These stand on the page of the colour dialog, which they need around them.
    const QStringList parts = {"ZvColorDialog",  "ZvColorTabWidget", "ZvIndexColorWnd", "ZvPaleteWnd",
                               "ZvTrueColorWnd", "ZvHSLWnd",         "ZvRGBWnd",        "ZvRGBSlider"};
    for (const QString &name : widgets)
        QVERIFY2(pages.contains(name) != parts.contains(name), qPrintable(name));
    for (const DialogDescription &dialog : dialogDescriptions())
        QVERIFY2(pages.contains(QLatin1String(dialog.name)), dialog.name);
    QCOMPARE(QSet<QString>(pages.begin(), pages.end()).size(), pages.size());
}

void tst_workbench_controls::everyPageOpens()
{
    QFETCH(QString, page);
    QVERIFY(openPlan());
    ControlsDriver controls(*m_session, page.toUtf8());
    QVERIFY(controls.page().isVisible());
    QCOMPARE(controls.page().objectName(), page);
    QCOMPARE(zvdbOpenObjectCount(), 0);
    QVERIFY(!m_session->document()->database()->canUndo());
    auto *shown = qobject_cast<ControlPage *>(&controls.page());
    if (!shown)
        return;
    QStringList names;
    for (QWidget *control : shown->controls()) {
        QVERIFY2(page == QLatin1String("ZvQtCanvas") || control->inherits(page.toLatin1()),
                 control->metaObject()->className());
        QVERIFY(!control->accessibleName().isEmpty());
        names << ControlPage::nameOf(*control);
    }
    QVERIFY(!names.isEmpty());
    QCOMPARE(names.removeDuplicates(), 0);
    QCOMPARE(controls.told(), QStringList());
}

void tst_workbench_controls::everyPageOpensWithoutADrawing()
{
    QFETCH(QString, page);
    QVERIFY(!m_session->document());
    ControlsDriver controls(*m_session, page.toUtf8());
    QVERIFY(controls.page().isVisible());
    QVERIFY(!m_session->document());
    auto *shown = qobject_cast<ControlPage *>(&controls.page());
    if (!shown)
        return;
    for (QWidget *control : shown->controls()) {
        const auto *bound = dynamic_cast<CZvQtControlHelp *>(control);
        if (!bound || !bound->hooked)
            continue;
        QVERIFY(!control->isEnabled());
        QCOMPARE(static_cast<QComboBox *>(control)->currentText(), QString());
    }
}

void tst_workbench_controls::searchHidesTheRest()
{
    ControlsDriver controls(*m_session, "ZvTextEdit");
    auto *search = controls.window().findChild<QLineEdit *>(QStringLiteral("searchPages"));
    auto *list = controls.window().findChild<QTreeWidget *>(QStringLiteral("pageList"));
    const auto shown = [list] {
        QStringList names;
        QTreeWidgetItemIterator at(list, QTreeWidgetItemIterator::NotHidden);
        for (; *at; ++at) {
            if ((*at)->parent() && !(*at)->parent()->isHidden())
                names << (*at)->text(0);
        }
        return names;
    };
    QCOMPARE(shown(), ControlsWindow::pageNames());
    QTest::keyClicks(search, QStringLiteral("lineWIDTH"));
    QCOMPARE(shown(), QStringList{QStringLiteral("ZvLineWidthComboBox")});
    search->selectAll();
    QTest::keyClicks(search, QStringLiteral("context menu")); // of the sentence
    QCOMPARE(shown(), QStringList{QStringLiteral("ZvTextEdit")});
    search->selectAll();
    QTest::keyClicks(search, QStringLiteral("no such thing"));
    QCOMPARE(shown(), QStringList());
    search->clear();
    QCOMPARE(shown(), ControlsWindow::pageNames());
}

void tst_workbench_controls::unknownPageChangesNothing()
{
    ControlsDriver controls(*m_session, "ZvTextEdit");
    QVERIFY(!controls.window().showPage(QStringLiteral("Styles"))); // a group
    QCOMPARE(controls.page().objectName(), QStringLiteral("ZvTextEdit"));
}

// ---- states

void tst_workbench_controls::boundControlsStandInTheirStates()
{
    QFETCH(QString, page);
    QVERIFY(openPlan());
    ControlsDriver controls(*m_session, page.toUtf8());
    auto *ordinary = static_cast<QComboBox *>(static_cast<ControlPage &>(controls.page()).controls().first());
    QVERIFY(!isHooked(ordinary) && ordinary->isEnabled());
    QVERIFY(isHooked(inState(controls, "Hooked")));
    QVERIFY(!isHooked(inState(controls, "Blank")));
    QCOMPARE(inState(controls, "Blank")->currentIndex(), -1);
    QVERIFY(!inState(controls, "Disabled")->isEnabled());
    QVERIFY(inState(controls, "Long")->count() >= ordinary->count() + 200
            || static_cast<QTableWidget *>(inState(controls, "Long")->view())->rowCount() > 2000);
}

void tst_workbench_controls::hookedControlsShowTheDrawingAtOnce_data()
{
    QTest::addColumn<QString>("page");
    for (const char *page :
         {"ZvColorComboBox", "ZvLineTypeComboBox", "ZvLineWidthComboBox", "ZvUtilsMaterialComboBox",
          "ZvUtilsPlotStyleNameComboBox", "ZvUtilsTextStyleComboBox", "ZvUtilsDimStyleComboBox",
          "ZvUtilsMleaderStyleComboBox", "ZvUtilsTableStyleComboBox", "ZvUtilsUcsComboBox", "ZvLayerUltralComboBox"})
        QTest::newRow(page) << QString::fromLatin1(page);
}

void tst_workbench_controls::hookedControlsShowTheDrawingAtOnce()
{
    QFETCH(QString, page);
    QVERIFY(openPlan());
    ControlsDriver controls(*m_session, page.toUtf8());
    const QComboBox *hooked = inState(controls, "Hooked");
    QVERIFY(hooked && hooked->isEnabled());
    const QComboBox *inToolBar = nullptr;
    for (const QComboBox *candidate : m_session->window().findChildren<QComboBox *>()) {
        if (candidate->inherits(page.toLatin1()) && !controls.window().isAncestorOf(candidate))
            inToolBar = candidate;
    }
    QVERIFY(inToolBar);
    if (page == QLatin1String("ZvLayerUltralComboBox")) {
        const auto picture = [](const QComboBox *combo) {
            for (const QLabel *label : combo->findChildren<QLabel *>()) {
                if (label->pixmap())
                    return true;
            }
            return false;
        };
        QVERIFY(picture(inToolBar));
        QVERIFY(picture(hooked));
        return;
    }
    QVERIFY(!hooked->currentText().isEmpty());
    QCOMPARE(hooked->currentText(), inToolBar->currentText());
}

void tst_workbench_controls::theDrawingClosesWhileThePageIsOpen()
{
    QFETCH(QString, page);
    QVERIFY(openPlan());
    ControlsDriver controls(*m_session, page.toUtf8());
    QVERIFY(inState(controls, "Hooked")->isEnabled());
    closeAll();
    QVERIFY(!inState(controls, "Hooked")->isEnabled()); // at once, before the page is made anew
    QCoreApplication::processEvents();
    QCOMPARE(controls.page().objectName(), page);
    QTRY_VERIFY(!inState(controls, "Hooked")->isEnabled());
    QCOMPARE(inState(controls, "Hooked")->currentText(), QString());
    m_session->newDrawing();
    QTRY_VERIFY(inState(controls, "Hooked")->isEnabled());
}

void tst_workbench_controls::anotherDrawingFillsTheListsAnew()
{
    m_session->newDrawing();
    ControlsDriver controls(*m_session, "ZvUtilsLayerComboBox");
    QCOMPARE(inState(controls, "Picker")->count(), 1);
    QVERIFY(openPlan());
    QTRY_VERIFY(inState(controls, "Picker")->findText(QStringLiteral("A-WALL")) >= 0);
}

// ---- signals

void tst_workbench_controls::aUserActionIsLogged_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<Action>("act");
    QTest::addColumn<QString>("line");
    const auto pick = [](const char *name) -> Action {
        return [name](ControlsDriver &controls) { pickByMouse(*controls.control<QComboBox>(name), 1); };
    };
    QTest::newRow("property controls") << "ZvColorComboBox" << pick("colorCombo")
                                       << "colorCombo: ColorItemChanged(#ffffff)";
    QTest::newRow("styles") << "ZvUtilsTextStyleComboBox" << pick("textStylePicker")
                            << "textStylePicker: textStyleTableItemChanged(Standard)";
    QTest::newRow("named objects") << "ZvUtilsBlockUnitComboBox" << pick("unitPicker")
                                   << "unitPicker: itemChanged(英寸)";
    QTest::newRow("coordinate systems") << "ZvUtilsUcsComboBox" << pick("ucsPicker") << "ucsPicker: activated(1)";
    QTest::newRow("views") << "ZvUtilsViewComboBox" << Action([](ControlsDriver &controls) {
        auto *combo = controls.control<QComboBox>("viewPicker");
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Down);
    }) << "viewPicker: activated(1)";
    QTest::newRow("small widgets") << "ZvUtilsIconPushButton" << Action([](ControlsDriver &controls) {
        QTest::mouseClick(controls.control<ZvUtilsIconPushButton>("iconButton"), Qt::LeftButton);
    }) << "iconButton: clicked(false)";
    QTest::newRow("colour") << "ZvColorButtonWidget" << Action([](ControlsDriver &controls) {
        ModalDriver driver;
        driver.next(press(QStringLiteral("确定")));
        QTest::mouseDClick(controls.control<QWidget>("colorButton"), Qt::LeftButton);
        QVERIFY(driver.finished());
    }) << "colorButton: colorChanged()";
    QTest::newRow("lists of pictures") << "ZvImageVew" << Action([](ControlsDriver &controls) {
        auto *list = controls.control<ZvImageVew>("imageView")->findChild<QListWidget *>();
        QTest::mouseClick(list->itemWidget(list->item(1)), Qt::LeftButton);
    }) << "imageView: colorItemSelected(Row 2)";
    QTest::newRow("tables") << "ZvQtLinetypeTableView" << Action([](ControlsDriver &controls) {
        auto *table = controls.control<ZvQtLinetypeTableView>("lineTypeTable");
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                          table->visualRect(table->index(1, 0, QModelIndex())).center());
    }) << "lineTypeTable: ltypeItemSelect(row 1, column 0)";
    QTest::newRow("nothing but the table's own space")
        << "ZvQtLinetypeTableView" << Action([](ControlsDriver &controls) {
               auto *table = controls.control<ZvQtLinetypeTableView>("lineTypeTable");
               table->resize(table->width(), 600);
               QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 560));
           })
        << "lineTypeTable: clickBlankArea()";
}

void tst_workbench_controls::aUserActionIsLogged()
{
    QFETCH(QString, page);
    QFETCH(Action, act);
    QFETCH(QString, line);
    m_session->newDrawing();
    ControlsDriver controls(*m_session, page.toUtf8());
    QCOMPARE(controls.told(), QStringList());
    act(controls);
    QVERIFY2(controls.told().contains(line), qPrintable(controls.told().join(QStringLiteral(" | "))));
}

void tst_workbench_controls::theLogIsCleared()
{
    ControlsDriver controls(*m_session, "ZvUtilsIconPushButton");
    QTest::mouseClick(controls.control<ZvUtilsIconPushButton>("iconButton"), Qt::LeftButton);
    QCOMPARE(controls.told().size(), 3); // pressed, released, clicked
    controls.forget();
    QCOMPARE(controls.told(), QStringList());
}

void tst_workbench_controls::whatPaintsIsNotLogged_data()
{
    QTest::addColumn<QString>("page");
    QTest::newRow("drop-down") << "ZvImageComboBox";
    QTest::newRow("row") << "ZvImageItem";
}

void tst_workbench_controls::whatPaintsIsNotLogged()
{
    QFETCH(QString, page);
    ControlsDriver controls(*m_session, page.toUtf8());
    controls.page().grab();
    QCOMPARE(controls.told(), QStringList());
}

// ---- settings

void tst_workbench_controls::propertiesGoToAllControls()
{
    m_session->newDrawing();
    ControlsDriver controls(*m_session, "ZvUtilsBlockUnitComboBox");
    const QVector<QWidget *> all = static_cast<ControlPage &>(controls.page()).controls();
    auto *rows = controls.control<QSpinBox>("maxVisibleItems");
    QVERIFY(rows);
    QCOMPARE(rows->value(), static_cast<QComboBox *>(all.first())->maxVisibleItems());
    rows->setValue(4);
    auto *policy = controls.control<QComboBox>("insertPolicy"); // an enumeration
    QVERIFY(policy);
    policy->setCurrentText(QStringLiteral("InsertAtTop"));
    controls.control<QCheckBox>("frame")->click();
    for (QWidget *control : all) {
        const auto *combo = static_cast<QComboBox *>(control);
        QCOMPARE(combo->maxVisibleItems(), 4);
        QCOMPARE(combo->insertPolicy(), QComboBox::InsertAtTop);
        QVERIFY(!combo->hasFrame());
    }
    controls.control<QCheckBox>("enabled")->click();
    for (QWidget *control : all)
        QVERIFY(!control->isEnabled());
}

void tst_workbench_controls::settingsGoToAllControls()
{
    m_session->newDrawing();
    {
        ControlsDriver controls(*m_session, "ZvColorComboBox");
        auto *combo = controls.control<ZvColorComboBox>("colorCombo");
        QCOMPARE(combo->count(), 10); // seven colours, by layer, by block, the dialog
        controls.control<QCheckBox>("selectRow")->click();
        QCOMPARE(combo->count(), 9);
        controls.control<QCheckBox>("byLayerAndBlock")->click();
        QCOMPARE(combo->count(), 7);
        controls.control<QCheckBox>("noneRow")->click();
        QCOMPARE(combo->count(), 8);
        QCOMPARE(controls.control<ZvColorComboBox>("colorComboBasic")->count(), 8);
    }
    ControlsDriver controls(*m_session, "ZvLineWidthComboBox");
    auto *combo = controls.control<ZvLineWidthComboBox>("lineWeightCombo");
    QVERIFY(combo->itemText(5).contains(QLatin1String("mm")) || !combo->itemText(5).contains(QLatin1Char('"')));
    controls.control<QCheckBox>("inch")->click();
    QVERIFY2(combo->itemText(5).contains(QLatin1Char('"')), qPrintable(combo->itemText(5)));
}

// ---- dialogs

void tst_workbench_controls::examplesFillInTheirKeys_data()
{
    QTest::addColumn<int>("demo");
    const QVector<DialogDemo> demos = allDemos();
    for (int i = 0; i < demos.size(); ++i)
        QTest::newRow(qPrintable(demos[i].id)) << i;
}

void tst_workbench_controls::examplesFillInTheirKeys()
{
    QFETCH(int, demo);
    const DialogDemo use = allDemos()[demo];
    m_session->newDrawing();
    ControlsDriver controls(*m_session, use.dialog);
    controls.control<QComboBox>("example")->setCurrentText(QString(use.menuText).remove(QLatin1Char('&')));
    const ZvJsonPtr wanted = use.parameters();
    ZvJsonPtr made;
    QVERIFY(static_cast<DialogPage &>(controls.page()).makeParameters(made));
    QCOMPARE(made->elementCount(), wanted->elementCount());
    for (int i = 0; i < wanted->elementCount(); ++i) {
        const ZvUtf8String key = wanted->keyAt(i);
        QVERIFY2(made->hasKey(key), key.c_str());
        if (wanted->element(i)->typeFlags() & IElementValueBase::kFlagReference)
            QVERIFY(!made->member(key)->asReference().isNull());
        else
            QCOMPARE(jsonOfBag(made->member(key)), jsonOfBag(wanted->element(i)));
    }
}

void tst_workbench_controls::everyDialogShowsItsResult_data()
{
    QTest::addColumn<QString>("page");
    for (const DialogDescription &dialog : dialogDescriptions())
        QTest::newRow(dialog.name) << QString::fromLatin1(dialog.name);
}

void tst_workbench_controls::everyDialogShowsItsResult()
{
    QFETCH(QString, page);
    m_session->newDrawing();
    ControlsDriver controls(*m_session, page.toUtf8());
    const auto *answers = controls.control<QTreeWidget>("answers");
    QCOMPARE(answers->topLevelItemCount(), 0);
    ModalDriver driver;
    driver.next(pressEscape);
    QTest::mouseClick(controls.control<QPushButton>("show"), Qt::LeftButton);
    QVERIFY(driver.finished());
    QCOMPARE(answers->topLevelItemCount(), 2);
    QVERIFY2(rowsOf(*answers).contains(QStringLiteral("result=2")),
             qPrintable(rowsOf(*answers).join(QLatin1Char(' '))));
}

void tst_workbench_controls::keysAreFilledInByHand()
{
    ControlsDriver controls(*m_session, "MessageBox");
    auto *keys = controls.control<QTableWidget>("keys");
    const auto rowOf = [keys](const char *key) {
        for (int row = 0; row < keys->rowCount(); ++row) {
            if (keys->item(row, 0)->text() == QLatin1String(key))
                return row;
        }
        return -1;
    };
    auto *flag = keys->findChild<QSpinBox *>(QStringLiteral("flag"));
    flag->selectAll();
    QTest::keyClicks(flag, QStringLiteral("6"));
    auto *texts = keys->findChild<QLineEdit *>(QStringLiteral("btnText"));
    QCOMPARE(keys->item(rowOf("btnText"), 0)->checkState(), Qt::Unchecked);
    texts->insert(QStringLiteral("[\"Up\",\"下\"]"));
    QCOMPARE(keys->item(rowOf("btnText"), 0)->checkState(), Qt::Checked);
    keys->item(rowOf("title"), 0)->setCheckState(Qt::Unchecked);
    QString title = QStringLiteral("not seen");
    QStringList buttons;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        title = dialog->windowTitle();
        for (const QPushButton *button : dialog->findChildren<QPushButton *>())
            buttons << button->text();
        press(QStringLiteral("下"))(dialog);
    });
    QTest::mouseClick(controls.control<QPushButton>("show"), Qt::LeftButton);
    QVERIFY(driver.finished());
    QCOMPARE(title, QString());
    QCOMPARE(buttons, (QStringList{QStringLiteral("Up"), QStringLiteral("下")}));
    const QStringList rows = rowsOf(*controls.control<QTreeWidget>("answers"));
    QVERIFY(rows.contains(QStringLiteral("result=1")));
    QVERIFY(rows.contains(QStringLiteral("ControlBtn=1")));
    QVERIFY(rows.contains(QStringLiteral("1=\"下\""))); // the tree that was passed
}

void tst_workbench_controls::whatIsNoTreeIsTold()
{
    ControlsDriver controls(*m_session, "MessageBox");
    QTest::keyClicks(controls.control<QLineEdit>("btnText"), QStringLiteral("[\"Up"));
    QTest::mouseClick(controls.control<QPushButton>("show"), Qt::LeftButton); // shows none
    const auto *answers = controls.control<QTreeWidget>("answers");
    QCOMPARE(answers->topLevelItemCount(), 1);
    QVERIFY(answers->topLevelItem(0)->text(0).contains(QLatin1String("JSON")));
}

// ---- pictures

void tst_workbench_controls::picturesOfAllPagesAreWritten()
{
    QVERIFY(openPlan());
    const QTemporaryDir folder;
    const QString pictures = folder.filePath(QStringLiteral("new/pictures"));
    QString error;
    QVERIFY2(writeControlPictures(pictures, &m_session->window(), error), qPrintable(error));
    QStringList expected{QStringLiteral("index.md")};
    for (const QString &page : ControlsWindow::pageNames())
        expected << page + QStringLiteral(".png");
    for (const DialogDescription &dialog : dialogDescriptions())
        expected << QLatin1String(dialog.name) + QStringLiteral("-dialog.png");
    expected.sort();
    QStringList written = QDir(pictures).entryList(QDir::Files);
    written.sort();
    QCOMPARE(written, expected);
    for (const QString &page : ControlsWindow::pageNames()) {
        const QString path = pictures + QLatin1Char('/') + page + QStringLiteral(".png");
        QCOMPARE(QImage(path).size(), QSize(760, 540));
        QVERIFY2(QFileInfo(path).size() < 60 * 1024, qPrintable(page));
    }
    QCOMPARE(contentOf(pictures + QStringLiteral("/index.md")), controlsGuide(QString()));
    QVERIFY(!m_session->window().findChild<ControlsWindow *>());
    QVERIFY(!m_session->database().canUndo());
}

void tst_workbench_controls::picturesNeedAFolder()
{
    m_session->newDrawing();
    QString error;
    QVERIFY(!writeControlPictures(QStringLiteral("/dev/null/pictures"), &m_session->window(), error));
    QVERIFY2(error.contains(QLatin1String("/dev/null/pictures")), qPrintable(error));
}

void tst_workbench_controls::theDocumentsShowEveryPage()
{
    const QString documents = QString::fromUtf8(kSource) + QStringLiteral("/docs/");
    QCOMPARE(contentOf(documents + QStringLiteral("controls.md")),
             controlsGuide(QStringLiteral("images/controls/"))); // otherwise: build docs-pictures
    for (const QString &page : ControlsWindow::pageNames()) {
        const QString picture = QStringLiteral("images/controls/%1.png").arg(page);
        QVERIFY2(!QImage(documents + picture).isNull(), qPrintable(picture));
    }
}

ZEVA_TEST_MAIN(tst_workbench_controls)
#include "tst_workbench_controls.moc"
