// SPDX-License-Identifier: MIT
#ifndef EVERYWIDGET_H
#define EVERYWIDGET_H

#include "dialogbag.h"
#include "drawingtest.h"

#include "zvcolorbutton.h"
#include "zvcolorcombobox.h"
#include "zvimagecombobox.h"
#include "zvlayerultralcombobox.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"
#include "zvmenupushbutton.h"
#include "zvqtcolorlabel.h"
#include "zvqtimagewidget.h"
#include "zvqtlinetypetableview.h"
#include "zvtextedit.h"
#include "zvunitlineedit.h"
#include "zvutilmaterialcombobox.h"
#include "zvutilsblockcombobox.h"
#include "zvutilsblockunitcombobox.h"
#include "zvutilsdimstylecombobox.h"
#include "zvutilsgradientcolorpushbutton.h"
#include "zvutilshatchnamecombobox.h"
#include "zvutilsiconpushbutton.h"
#include "zvutilslayercombobox.h"
#include "zvutilsmleaderstylecombobox.h"
#include "zvutilsplotstylenamecombobox.h"
#include "zvutilsplotstyletablecombobox.h"
#include "zvutilsshadeplotcombobox.h"
#include "zvutilstablecellcolstylecombobox.h"
#include "zvutilstablecellrowstylecombobox.h"
#include "zvutilstablecellstylecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"
#include "zvutilsucscombobox.h"
#include "zvutilsviewcombobox.h"

#include "db/zvdbhostservice.h"

#include <QApplication>
#include <QVBoxLayout>

#include <memory>

/// A widget of the library as a host makes it, for tests that go over all of them. The tests are DrawingTests.
class EveryWidget
{
public:
    enum Kind { kControl, kDialog };

    struct Maker
    {
        const char *name;
        Kind kind;
        void (*make)(EveryWidget &made);
    };

    explicit EveryWidget(const Maker &maker) : m_window(new QWidget), m_layout(new QVBoxLayout(m_window.get()))
    {
        maker.make(*this);
    }
    /// What is shown: the dialog, or a window with the control in it.
    QWidget *window() const { return m_dialog ? m_dialog : m_window.get(); }
    /// The dialog or the control itself.
    QWidget *widget() const { return m_dialog ? m_dialog : m_control; }
    bool show() const
    {
        window()->show();
        return QTest::qWaitForWindowExposed(window());
    }

    template <class T> T *add(T *control)
    {
        m_control = control;
        m_layout->addWidget(control);
        return control;
    }
    QWidget *parent() const { return m_window.get(); }
    void runs(const ZvString &dialog, const ZvJsonPtr &params)
    {
        const QWidgetList before = QApplication::topLevelWidgets();
        m_adapter = ModuleSession::createDialog(dialog, nullptr);
        const QWidgetList after = QApplication::topLevelWidgets();
        for (QWidget *window : after) {
            if (!before.contains(window) && qobject_cast<QDialog *>(window))
                m_dialog = window;
        }
        m_isReady = m_adapter->onInit(params, nullptr);
    }
    /// Of a dialog.
    const ZvUiDialogBasePtr &adapter() const { return m_adapter; }
    bool isReady() const { return m_isReady && widget(); }

    static const QVector<Maker> &all();

private:
    ZvUiDialogBasePtr m_adapter; // deletes the dialog
    std::unique_ptr<QWidget> m_window;
    QVBoxLayout *m_layout;
    QWidget *m_control = nullptr;
    QWidget *m_dialog = nullptr;
    bool m_isReady = true;
};

namespace EveryWidgetMakers {

template <class T> void plain(EveryWidget &made)
{
    made.add(new T(made.parent()));
}

template <class T> void hooked(EveryWidget &made)
{
    made.add(new T(true, made.parent()));
}

inline const ZvDbDatabase *drawing()
{
    return zvDocManagerPtr()->currentDocument()->database();
}

template <class T> void cellStyles(EveryWidget &made)
{
    const std::unique_ptr<ZvResBuf, void (*)(ZvResBuf *)> style(
        zvrxCast<ZvDbHostService>(zvrxGetService(3))->readVariable(L"CTABLESTYLE", drawing()),
        [](ZvResBuf *value) { zvutRelRb(value); });
    made.add(new T(true, style->getObjectId(), made.parent()));
}

inline ZvJsonPtr bag()
{
    return ElementValue::createObject(IElementValueBase::kObject);
}

inline void messageBox(EveryWidget &made, int flag)
{
    const ZvJsonPtr params = bag();
    params->SetDataSW("title", L"caller");
    params->SetDataSW("msg", L"caller");
    params->SetDataI("contentFlag", 1);
    params->SetDataI("flag", flag);
    made.runs(L"MessageBox", params);
}

inline void taskDialog(EveryWidget &made, int flag)
{
    const ZvJsonPtr params = bag();
    for (const char *key : {"title", "msg", "content", "expandedInformation", "checkboxText"})
        params->SetDataSW(key, L"caller");
    params->SetDataI("contentFlag", 15);
    params->SetDataI("flag", flag);
    const ZvJsonPtr commands = ElementValue::createObject(IElementValueBase::kArray);
    const ZvJsonPtr command = bag();
    command->SetDataI("id", 100);
    command->SetDataSW("caption", L"caller");
    commands->append(command);
    params->SetDataJ("selBtnText", commands);
    made.runs(L"TaskDialog", params);
}

inline void colorDialog(EveryWidget &made, int method, int value)
{
    const ZvJsonPtr params = bag();
    params->SetDataI("clrMethod", method);
    params->SetDataI("selectClr", value);
    made.runs(L"ColorDialog", params);
}

inline void fileDialog(EveryWidget &made, bool opens)
{
    const ZvJsonPtr params = bag();
    params->SetDataSW("caption", L"caller");
    params->SetDataSW("filter", L"caller (*.dxf)");
    params->SetDataB("Open", opens);
    made.runs(L"FileDialogBox", params);
}

inline void preview(EveryWidget &made)
{
    const ZvJsonPtr paper = bag();
    paper->SetDataSW("name", L"caller");
    paper->SetDataD("paper_w", 210);
    paper->SetDataD("paper_h", 297);
    const ZvJsonPtr params = bag();
    params->SetDataJ("paper", paper);
    params->SetDataB("enable_print", true);
    made.runs(L"CADPreviewDialog", params);
}

inline void imageCombo(EveryWidget &made)
{
    auto *combo = made.add(new ZvImageComboBox(made.parent()));
    combo->resize(180, 25);
    combo->createCustomItem(QStringLiteral("caller"), ZvImageComboBox::kItemShown);
    combo->createCustomItem(QStringLiteral("caller 2"), ZvImageComboBox::kItemShown);
}

/// Of two line types with a description.
inline void lineTypeTable(EveryWidget &made)
{
    auto *table = made.add(new ZvQtLinetypeTableView(ZvQtLinetypeTableView::kInteractive, made.parent()));
    table->setMinimumSize(400, 120);
    const ZvJsonPtr elements = ElementValue::createObject(IElementValueBase::kArray);
    for (const wchar_t *name : {L"caller", L"caller 2"}) {
        const ZvJsonPtr element = bag();
        element->SetDataSW("name", name);
        element->SetDataSW("comments", L"caller");
        elements->append(element);
    }
    const ZvJsonPtr lineTypes = bag();
    lineTypes->SetDataJ("elements", elements);
    table->loadLtypeData(lineTypes);
}

inline void colorCombo(EveryWidget &made)
{
    made.add(new ZvColorComboBox(true, made.parent()))
        ->setViewStyle(ZvColorComboBox::kColorViewByLayerBlock | ZvColorComboBox::kColorViewSelect | ZvColorComboBox::kColorViewNone | ZvColorComboBox::kColorViewUseCurrent);
}

} // namespace EveryWidgetMakers

inline const QVector<EveryWidget::Maker> &EveryWidget::all()
{
    using namespace EveryWidgetMakers;
    static const QVector<Maker> makers = {
        {"message box, OK", kDialog, [](EveryWidget &made) { messageBox(made, 0); }},
        {"message box, OK and Cancel", kDialog, [](EveryWidget &made) { messageBox(made, 1); }},
        {"message box, Abort, Retry and Ignore", kDialog, [](EveryWidget &made) { messageBox(made, 2); }},
        {"message box, Yes, No and Cancel", kDialog, [](EveryWidget &made) { messageBox(made, 3); }},
        {"message box, Yes and No", kDialog, [](EveryWidget &made) { messageBox(made, 4); }},
        {"message box, Retry and Cancel", kDialog, [](EveryWidget &made) { messageBox(made, 5); }},
        {"task dialog, all standard buttons", kDialog, [](EveryWidget &made) { taskDialog(made, 63); }},
        {"task dialog, the one button", kDialog, [](EveryWidget &made) { taskDialog(made, 64); }},
        {"file dialog, opening", kDialog, [](EveryWidget &made) { fileDialog(made, true); }},
        {"file dialog, saving", kDialog, [](EveryWidget &made) { fileDialog(made, false); }},
        {"print preview", kDialog, preview},
        {"colour dialog, index colour", kDialog, [](EveryWidget &made) { colorDialog(made, 195, 1); }},
        {"colour dialog, true colour", kDialog, [](EveryWidget &made) { colorDialog(made, 194, 0x123456); }},

        {"colour list", kControl, colorCombo},
        {"layer list", kControl, hooked<ZvLayerUltralComboBox>},
        {"line type list", kControl, hooked<ZvLineTypeComboBox>},
        {"line weight list", kControl,
         [](EveryWidget &made) { made.add(new ZvLineWidthComboBox(true, 15, made.parent())); }},
        {"text style", kControl,
         [](EveryWidget &made) { made.add(new ZvUtilsTextStyleComboBox(true, made.parent(), false)); }},
        {"dimension style", kControl, hooked<ZvUtilsDimStyleComboBox>},
        {"multileader style", kControl, hooked<ZvUtilsMleaderStyleComboBox>},
        {"table style", kControl, hooked<ZvUtilsTableStyleComboBox>},
        {"cell style", kControl, cellStyles<ZvUtilsTableCellStyleComboBox>},
        {"cell style of a row", kControl, cellStyles<ZvUtilsTableCellRowStyleComboBox>},
        {"cell style of a column", kControl, cellStyles<ZvUtilsTableCellColStyleComboBox>},
        {"layer", kControl, [](EveryWidget &made) { made.add(new ZvUtilsLayerComboBox(true, 1, made.parent())); }},
        {"material", kControl, hooked<ZvUtilsMaterialComboBox>},
        {"plot style name", kControl, hooked<ZvUtilsPlotStyleNameComboBox>},
        {"block", kControl, [](EveryWidget &made) { made.add(new ZvUtilsBlockComboBox(true, made.parent(), false)); }},
        {"block unit", kControl, hooked<ZvUtilsBlockUnitComboBox>},
        {"hatch name", kControl, hooked<ZvUtilsHatchNameComboBox>},
        {"plot style table", kControl, hooked<ZvUtilsPlotStyleTableComboBox>},
        {"shade plot", kControl, hooked<ZvUtilsShadePlotComboBox>},
        {"coordinate system", kControl, hooked<ZvUtilsUcsComboBox>},
        {"view", kControl, hooked<ZvUtilsViewComboBox>},
        {"image list", kControl, imageCombo},
        {"line type table", kControl, lineTypeTable},
        {"colour button", kControl, plain<ZvColorButtonWidget>},
        {"icon button", kControl,
         [](EveryWidget &made) {
             made.add(new ZvUtilsIconPushButton(QStringLiteral(":/res/view_top.bmp"), QStringLiteral("normal"), true,
                                                made.parent()));
         }},
        {"gradient button", kControl, plain<ZvUtilsGradientColorPushButton>},
        {"menu button", kControl, plain<ZvMenuPushButton>},
        {"text edit", kControl, plain<ZvTextEdit>},
        {"unit edit", kControl, plain<ZvUnitLineEdit>},
        {"colour label", kControl, plain<ZvQtColorLabel>},
        {"image widget", kControl, plain<ZvQtImageWidget>},
    };
    return makers;
}

#endif
