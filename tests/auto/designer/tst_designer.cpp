// SPDX-License-Identifier: MIT
// The plugin for Qt Designer. There is no kernel at work here: nothing is started, no service registered, no drawing
// open, just as in Designer itself.
#include "paintcount.h"
#include "ui_all_widgets.h"
#include "zevatest.h"

#include <QComboBox>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QSet>
#include <QUiLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>

namespace {

QList<QDesignerCustomWidgetInterface *> pluginWidgets()
{
    static QPluginLoader loader(QStringLiteral(ZEVA_PLUGIN));
    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
    return collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface *>();
}

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The exported widget classes that the public headers declare.
QSet<QString> exportedWidgets()
{
    const QSet<QString> noWidgets = {QStringLiteral("QEvent"), QStringLiteral("QObject"),
                                     QStringLiteral("QSortFilterProxyModel"), QStringLiteral("QStyledItemDelegate")};
    const QRegularExpression declaration(QStringLiteral("class ZV_EXPORT (\\w+) : public (\\w+)"));
    QSet<QString> widgets;
    QHash<QString, QString> bases;
    const QDir folder(QStringLiteral(ZEVA_HEADER_DIR));
    for (const QString &name : folder.entryList({QStringLiteral("*.h")})) {
        auto found = declaration.globalMatch(contents(folder.filePath(name)));
        while (found.hasNext()) {
            const QRegularExpressionMatch match = found.next();
            bases.insert(match.captured(1), match.captured(2));
        }
    }
    for (auto it = bases.cbegin(); it != bases.cend(); ++it) {
        QString base = it.value();
        while (bases.contains(base))
            base = bases.value(base);
        if (base.startsWith(QLatin1Char('Q')) && !noWidgets.contains(base))
            widgets.insert(it.key());
    }
    // Row and list of a ZvImageComboBox, which makes them itself; the colour dialog, and what is nothing without it.
    for (const char *part : {"ZvImageItem", "ZvImageVew", "ZvColorDialog", "ZvColorTabWidget", "ZvIndexColorWnd",
                             "ZvPaleteWnd", "ZvRGBSlider", "ZvTrueColorWnd"})
        widgets.remove(QString::fromLatin1(part));
    return widgets;
}

struct FormRow
{
    const char *name;
    const char *property;
    QVariant value;
};

/// What all_widgets.ui sets.
QVector<FormRow> formRows()
{
    return {
        {"aColorComboBox", "viewStyle", 2 | 8},
        {"aLayerUltralComboBox", "minimumWidth", 171},
        {"aLineWidthComboBox", "currentIndex", 2},
        {"aUtilsBlockUnitComboBox", "currentIndex", 4},
        {"aUtilsTextStyleComboBox", "toolTip", QStringLiteral("Text style")},
        {"aQtLinetypeTableView", "sortingEnabled", false},
        {"aQtLinetypeTableView", "selectionMode", int(QAbstractItemView::ExtendedSelection)},
        {"aColorButtonWidget", "color", QColor(10, 20, 30)},
        {"aQtColorLabel", "color", QColor(40, 50, 60)},
        {"normal", "imagePaths", QStringLiteral(":/res/file.png$:/res/computer.png")},
        {"normal", "stateNames", QStringLiteral("normal$pressed")},
        {"normal", "framed", false},
        {"aUtilsGradientColorPushButton", "firstColor", QColor(200, 0, 0)},
        {"aUtilsGradientColorPushButton", "secondColor", QColor(0, 0, 200)},
        {"aUtilsGradientColorPushButton", "centered", true},
        {"aUtilsGradientColorPushButton", "twoColors", true},
        {"aUtilsGradientColorPushButton", "angle", 45},
        {"aUtilsGradientColorPushButton", "shade", -20},
        {"aUtilsGradientColorPushButton", "pattern", 2},
        {"aUtilsGradientColorPushButton", "selected", true},
        {"aUnitLineEdit", "text", QStringLiteral("12.5")},
        {"aTextEdit", "plainText", QStringLiteral("Note")},
        {"aMenuPushButton", "text", QStringLiteral("Insert")},
    };
}

std::unique_ptr<QWidget> loadedForm()
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(QStringLiteral(ZEVA_PLUGIN_DIR));
    QFile file(QStringLiteral(ZEVA_FORM));
    file.open(QFile::ReadOnly);
    return std::unique_ptr<QWidget>(loader.load(&file));
}

std::unique_ptr<QWidget> compiledForm()
{
    auto form = std::make_unique<QWidget>();
    Ui::AllWidgets ui;
    ui.setupUi(form.get());
    return form;
}

} // namespace

class TestDesigner : public ZevaTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyExportedWidgetIsInThePlugin();
    void describesTheWidget_data() { addWidgets(); }
    void describesTheWidget();
    void livesWithoutAKernel_data() { addWidgets(); }
    void livesWithoutAKernel();
    void formHasEveryWidget_data() { addForms(); }
    void formHasEveryWidget();
    void formSetsTheProperties_data();
    void formSetsTheProperties();
    void settingAPropertyRepaintsTheSwatch();
    void typedTextIsNotYetTheValue();

private:
    static void addWidgets();
    static void addForms();
};

void TestDesigner::addWidgets()
{
    QTest::addColumn<int>("row");
    const auto widgets = pluginWidgets();
    for (int row = 0; row < widgets.size(); ++row)
        QTest::newRow(qPrintable(widgets.at(row)->name())) << row;
    if (widgets.isEmpty())
        QTest::newRow("the plugin cannot be loaded") << 0;
}

void TestDesigner::addForms()
{
    QTest::addColumn<bool>("isCompiled");
    QTest::newRow("loaded at run time") << false;
    QTest::newRow("compiled by uic") << true;
}

void TestDesigner::everyExportedWidgetIsInThePlugin()
{
    QStringList names;
    for (const QDesignerCustomWidgetInterface *widget : pluginWidgets())
        names << widget->name();
    QStringList exported = exportedWidgets().values();
    names.sort();
    exported.sort();
    QCOMPARE(names, exported);
    QVERIFY(names.size() >= 30);
}

void TestDesigner::describesTheWidget()
{
    QFETCH(int, row);
    QDesignerCustomWidgetInterface *widget = pluginWidgets().value(row);
    QVERIFY(widget);
    const QString header = contents(QStringLiteral(ZEVA_HEADER_DIR "/") + widget->includeFile());
    QVERIFY2(header.contains(QStringLiteral("class ZV_EXPORT ") + widget->name() + QStringLiteral(" : ")),
             qPrintable(widget->includeFile()));
    QVERIFY(!widget->group().isEmpty());
    QVERIFY(!widget->toolTip().isEmpty());
    QVERIFY(!widget->whatsThis().isEmpty());
    QVERIFY(!widget->isContainer());

    QVERIFY(widget->icon().availableSizes().contains({22, 22})); // the widget box shows no other
    const QImage icon = widget->icon().pixmap(22, 22).toImage();
    QCOMPARE(icon.size(), QSize(22, 22));
    QSet<QRgb> colors;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x)
            colors.insert(icon.pixel(x, y));
    }
    QVERIFY(colors.size() > 2);

    QDomDocument xml;
    QVERIFY(xml.setContent(widget->domXml()));
    const QDomElement element = xml.documentElement().firstChildElement(QStringLiteral("widget"));
    QCOMPARE(element.attribute(QStringLiteral("class")), widget->name());
    const QString objectName = element.attribute(QStringLiteral("name"));
    QVERIFY2(QRegularExpression(QStringLiteral("^[a-z]\\w+$")).match(objectName).hasMatch(), qPrintable(objectName));

    QWidget parent;
    QWidget *made = widget->createWidget(&parent);
    QVERIFY(made);
    QCOMPARE(QString::fromLatin1(made->metaObject()->className()), widget->name());
    QCOMPARE(made->parentWidget(), &parent);
}

void TestDesigner::livesWithoutAKernel()
{
    QFETCH(int, row);
    QDesignerCustomWidgetInterface *widget = pluginWidgets().value(row);
    QVERIFY(widget);
    const std::unique_ptr<QWidget> alone(widget->createWidget(nullptr)); // as Designer asks it for its properties
    QWidget window;
    QWidget *made = widget->createWidget(&window);
    window.resize(400, 300);
    made->setGeometry(20, 20, 200, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (int i = 0; i < made->metaObject()->propertyCount(); ++i)
        made->metaObject()->property(i).read(made);
    // What a user does in Designer's preview.
    QTest::mouseMove(made, made->rect().center());
    QTest::mouseClick(made, Qt::LeftButton, {}, {5, 5});
    if (auto *combo = qobject_cast<QComboBox *>(made)) {
        combo->hidePopup();
        combo->showPopup();
        combo->hidePopup();
        for (int index = 0; index < combo->count(); ++index)
            combo->setCurrentIndex(index);
    }
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Space, Qt::Key_Escape})
        QTest::keyClick(made, key);
    if (QWidget *popup = QApplication::activePopupWidget())
        popup->close();
    for (QPushButton *button : made->findChildren<QPushButton *>())
        button->click();
    QVERIFY(!window.grab().isNull());
}

void TestDesigner::formHasEveryWidget()
{
    QFETCH(bool, isCompiled);
    const std::unique_ptr<QWidget> form = isCompiled ? compiledForm() : loadedForm();
    QVERIFY(form);
    QDomDocument xml;
    QVERIFY(xml.setContent(contents(QStringLiteral(ZEVA_FORM))));
    const QDomNodeList elements = xml.elementsByTagName(QStringLiteral("widget"));
    QStringList classes;
    for (int i = 1; i < elements.size(); ++i) { // without the form itself
        const QDomElement element = elements.at(i).toElement();
        const auto *widget = form->findChild<QWidget *>(element.attribute(QStringLiteral("name")));
        QVERIFY2(widget, qPrintable(element.attribute(QStringLiteral("name"))));
        QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), element.attribute(QStringLiteral("class")));
        classes << element.attribute(QStringLiteral("class"));
    }
    QStringList exported = exportedWidgets().values();
    classes.sort();
    exported.sort();
    QCOMPARE(classes, exported);
}

void TestDesigner::formSetsTheProperties_data()
{
    QTest::addColumn<bool>("isCompiled");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    for (const bool isCompiled : {false, true}) {
        for (const FormRow &row : formRows()) {
            const QString what = QStringLiteral("%1: %2.%3")
                                     .arg(QLatin1String(isCompiled ? "compiled" : "loaded"), QLatin1String(row.name),
                                          QLatin1String(row.property));
            QTest::newRow(qPrintable(what))
                << isCompiled << QString::fromLatin1(row.name) << QByteArray(row.property) << row.value;
        }
    }
}

void TestDesigner::formSetsTheProperties()
{
    QFETCH(bool, isCompiled);
    QFETCH(QString, name);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    const std::unique_ptr<QWidget> form = isCompiled ? compiledForm() : loadedForm();
    QVERIFY(form);
    const auto *widget = form->findChild<QWidget *>(name);
    QVERIFY(widget);
    QVERIFY2(widget->metaObject()->indexOfProperty(property) >= 0, "a dynamic property");
    const QVariant found = widget->property(property);
    QVERIFY(found.isValid());
    if (value.type() == QVariant::Int)
        QCOMPARE(found.toInt(), value.toInt());
    else
        QCOMPARE(found, value);
}

void TestDesigner::settingAPropertyRepaintsTheSwatch()
{
    ZvUtilsGradientColorPushButton button;
    button.resize(60, 60);
    button.setProperty("pattern", 1);
    button.setProperty("twoColors", true);
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QCoreApplication::processEvents();
    PaintCount paints(&button);
    const QImage before = button.grab().toImage();
    paints.count = 0;
    button.setProperty("firstColor", QColor(Qt::red));
    QTRY_VERIFY(paints.count > 0);
    QVERIFY(button.grab().toImage() != before);
}

void TestDesigner::typedTextIsNotYetTheValue()
{
    ZvUnitLineEdit field;
    field.setProperty("text", QStringLiteral("12.5"));
    QCOMPARE(field.text(), QStringLiteral("12.5"));
    QTest::keyClicks(&field, QStringLiteral("7"));
    QCOMPARE(field.property("text").toString(), QStringLiteral("12.5"));
    QCOMPARE(static_cast<QLineEdit &>(field).text(), QStringLiteral("12.57"));
}

ZEVA_TEST_MAIN(TestDesigner)
#include "tst_designer.moc"
