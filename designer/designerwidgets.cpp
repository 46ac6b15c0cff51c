// SPDX-License-Identifier: MIT
#include "designerwidgets.h"

#include "uicolorindextab.h"
#include "uitruecolortab.h"
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

namespace {

constexpr char kProperties[] = "Zeva: Drawing Properties";
constexpr char kStyles[] = "Zeva: Styles";
constexpr char kNames[] = "Zeva: Named Objects";
constexpr char kViews[] = "Zeva: Views";
constexpr char kPlot[] = "Zeva: Plotting";
constexpr char kPictures[] = "Zeva: Pictures and Colors";
constexpr char kInput[] = "Zeva: Input";

template <class Widget> QWidget *make(QWidget *parent)
{
    return new Widget(parent);
}

} // namespace

const std::vector<DesignerWidget> &designerWidgets()
{
    static const std::vector<DesignerWidget> widgets = {
        {"ZvColorComboBox",
         "zvcolorcombobox.h",
         kProperties,
         "color",
         "Drop-down of colors",
         "Lists ByLayer, ByBlock, the basic colors and those chosen before; its last row opens the color dialog. "
         "viewStyle tells which of these rows it has.",
         make<ZvColorComboBox>,
         {120, 25}},
        {"ZvLayerUltralComboBox",
         "zvlayerultralcombobox.h",
         kProperties,
         "layer",
         "Drop-down of layers with their states",
         "A list of layers with push buttons that switch, freeze, lock and recolor them.",
         make<ZvLayerUltralComboBox>,
         {180, 25}},
        {"ZvUtilsLayerComboBox",
         "zvutilslayercombobox.h",
         kProperties,
         "layer",
         "Drop-down of layer names",
         "The plain list of layers: names only.",
         make<ZvUtilsLayerComboBox>,
         {120, 25}},
        {"ZvLineTypeComboBox",
         "zvlinetypecombobox.h",
         kProperties,
         "linetype",
         "Drop-down of line types",
         "Lists the drawing's line types with pictures of their patterns; its last row opens the line type manager.",
         make<ZvLineTypeComboBox>,
         {160, 25}},
        {"ZvLineWidthComboBox",
         "zvlinewidthcombobox.h",
         kProperties,
         "lineweight",
         "Drop-down of line weights",
         "Lists the line weights with sample lines.",
         make<ZvLineWidthComboBox>,
         {160, 25}},
        {"ZvUtilsMaterialComboBox",
         "zvutilmaterialcombobox.h",
         kProperties,
         "material",
         "Drop-down of materials",
         "Lists the drawing's materials.",
         make<ZvUtilsMaterialComboBox>,
         {120, 25}},
        {"ZvQtLinetypeTableView",
         "zvqtlinetypetableview.h",
         kProperties,
         "table",
         "Table of line types",
         "Name, pattern and description of line types. The program fills it by loadLtypeData().",
         make<ZvQtLinetypeTableView>,
         {320, 160}},

        {"ZvUtilsTextStyleComboBox",
         "zvutilstextstylecombobox.h",
         kStyles,
         "style",
         "Drop-down of text styles",
         "Lists the drawing's text styles by name.",
         make<ZvUtilsTextStyleComboBox>,
         {120, 25}},
        {"ZvUtilsDimStyleComboBox",
         "zvutilsdimstylecombobox.h",
         kStyles,
         "style",
         "Drop-down of dimension styles",
         "Lists the drawing's dimension styles.",
         make<ZvUtilsDimStyleComboBox>,
         {120, 25}},
        {"ZvUtilsMleaderStyleComboBox",
         "zvutilsmleaderstylecombobox.h",
         kStyles,
         "style",
         "Drop-down of multileader styles",
         "Lists the drawing's multileader styles.",
         make<ZvUtilsMleaderStyleComboBox>,
         {120, 25}},
        {"ZvUtilsTableStyleComboBox",
         "zvutilstablestylecombobox.h",
         kStyles,
         "style",
         "Drop-down of table styles",
         "Lists the drawing's table styles.",
         make<ZvUtilsTableStyleComboBox>,
         {120, 25}},
        {"ZvUtilsTableCellStyleComboBox",
         "zvutilstablecellstylecombobox.h",
         kStyles,
         "style",
         "Drop-down of cell styles",
         "Lists the cell styles of the table style that the program tells it by init(), and \"by row or column\".",
         make<ZvUtilsTableCellStyleComboBox>,
         {120, 25}},
        {"ZvUtilsTableCellRowStyleComboBox",
         "zvutilstablecellrowstylecombobox.h",
         kStyles,
         "style",
         "Drop-down of cell styles for rows",
         "Lists the cell styles of the table style that the program tells it by init().",
         make<ZvUtilsTableCellRowStyleComboBox>,
         {120, 25}},
        {"ZvUtilsTableCellColStyleComboBox",
         "zvutilstablecellcolstylecombobox.h",
         kStyles,
         "style",
         "Drop-down of cell styles for columns",
         "Lists the cell styles of the table style that the program tells it by init(), and \"none\".",
         make<ZvUtilsTableCellColStyleComboBox>,
         {120, 25}},

        {"ZvUtilsBlockComboBox",
         "zvutilsblockcombobox.h",
         kNames,
         "object",
         "Drop-down of blocks",
         "Lists the drawing's blocks.",
         make<ZvUtilsBlockComboBox>,
         {120, 25}},
        {"ZvUtilsBlockUnitComboBox",
         "zvutilsblockunitcombobox.h",
         kNames,
         "object",
         "Drop-down of block units",
         "Lists the units that a block can be drawn in.",
         make<ZvUtilsBlockUnitComboBox>,
         {120, 25}},
        {"ZvUtilsHatchNameComboBox",
         "zvutilshatchnamecombobox.h",
         kNames,
         "hatch",
         "Drop-down of hatch patterns",
         "Lists the names of hatch patterns.",
         make<ZvUtilsHatchNameComboBox>,
         {120, 25}},

        {"ZvUtilsUcsComboBox",
         "zvutilsucscombobox.h",
         kViews,
         "ucs",
         "Drop-down of coordinate systems",
         "Lists the preset coordinate systems and those of the drawing.",
         make<ZvUtilsUcsComboBox>,
         {140, 25}},
        {"ZvUtilsViewComboBox",
         "zvutilsviewcombobox.h",
         kViews,
         "view",
         "Drop-down of views",
         "Starts the commands that show a preset or a named view.",
         make<ZvUtilsViewComboBox>,
         {140, 25}},

        {"ZvUtilsPlotStyleNameComboBox",
         "zvutilsplotstylenamecombobox.h",
         kPlot,
         "plot",
         "Drop-down of plot styles",
         "Lists ByLayer, ByBlock and the drawing's plot styles.",
         make<ZvUtilsPlotStyleNameComboBox>,
         {120, 25}},
        {"ZvUtilsPlotStyleTableComboBox",
         "zvutilsplotstyletablecombobox.h",
         kPlot,
         "plot",
         "Drop-down of plot style tables",
         "Lists the plot style table files that fit the drawing.",
         make<ZvUtilsPlotStyleTableComboBox>,
         {120, 25}},
        {"ZvUtilsShadePlotComboBox",
         "zvutilsshadeplotcombobox.h",
         kPlot,
         "plot",
         "Drop-down of shade plot modes",
         "Lists the shade plot modes that the program's plot service offers.",
         make<ZvUtilsShadePlotComboBox>,
         {120, 25}},

        {"ZvColorButtonWidget",
         "zvcolorbutton.h",
         kPictures,
         "color",
         "Color swatch with a button",
         "Shows a color; its button opens the color dialog.",
         make<ZvColorButtonWidget>,
         {100, 25}},
        {"ZvQtColorLabel",
         "zvqtcolorlabel.h",
         kPictures,
         "color",
         "Label that shows a color",
         "A square in a color, as high as the text.",
         make<ZvQtColorLabel>,
         {25, 25}},
        {"ZvColorLabel",
         "uicolorindextab.h",
         kPictures,
         "color",
         "Swatch that tells of a double click",
         "The swatch of the color dialog's tabs: a label with a signal for a double click.",
         make<ZvColorLabel>,
         {50, 25}},
        {"ZvHSLPallete",
         "uitruecolortab.h",
         kPictures,
         "color",
         "Field of hue and saturation",
         "The field of the color dialog, with a cross at the color.",
         make<ZvHSLPallete>,
         {200, 150}},
        {"ZvColorLightWnd",
         "uitruecolortab.h",
         kPictures,
         "gradient",
         "Strip of lightness",
         "The strip of the color dialog, in one hue and saturation.",
         make<ZvColorLightWnd>,
         {30, 150}},
        {"ZvHSLWnd",
         "uitruecolortab.h",
         kPictures,
         "color",
         "Panel of hue, saturation and lightness",
         "One of the two panels of the color dialog's true color tab.",
         make<ZvHSLWnd>,
         {320, 240}},
        {"ZvRGBWnd",
         "uitruecolortab.h",
         kPictures,
         "color",
         "Panel of red, green and blue",
         "One of the two panels of the color dialog's true color tab.",
         make<ZvRGBWnd>,
         {320, 240}},
        {"ZvQtImageWidget",
         "zvqtimagewidget.h",
         kPictures,
         "image",
         "Preview of entities",
         "A small picture of the entities that the program gives it by attachDbEntities().",
         make<ZvQtImageWidget>,
         {120, 90}},
        {"ZvImageComboBox",
         "zvimagecombobox.h",
         kPictures,
         "image",
         "Drop-down of pictures",
         "Its rows are drawn by the program in a slot of onDraw().",
         make<ZvImageComboBox>,
         {180, 25}},
        // The object name is the state whose picture is shown.
        {"ZvUtilsIconPushButton",
         "zvutilsiconpushbutton.h",
         kPictures,
         "button",
         "Button that is a picture",
         "A picture for each state. The button's object name is its state; stateNames and imagePaths are lists "
         "separated "
         "by \"$\".",
         make<ZvUtilsIconPushButton>,
         {25, 25},
         "normal"},
        {"ZvUtilsGradientColorPushButton",
         "zvutilsgradientcolorpushbutton.h",
         kPictures,
         "gradient",
         "Button that shows a gradient",
         "A swatch of a gradient fill of one or two colors.",
         make<ZvUtilsGradientColorPushButton>,
         {60, 60}},

        {"ZvUnitLineEdit",
         "zvunitlineedit.h",
         kInput,
         "field",
         "Field for a number with a unit",
         "Takes a number; what was typed becomes the value when the field loses the keyboard.",
         make<ZvUnitLineEdit>,
         {100, 25}},
        {"ZvTextEdit",
         "zvtextedit.h",
         kInput,
         "field",
         "Text box without a context menu",
         "A text box; the program may give it a context menu of its own.",
         make<ZvTextEdit>,
         {160, 80}},
        {"ZvMenuPushButton",
         "zvmenupushbutton.h",
         kInput,
         "button",
         "Push button with a menu",
         "Its right third opens the menu of the actions that the program adds by addMenu().",
         make<ZvMenuPushButton>,
         {100, 25}},
    };
    return widgets;
}

QString designerXml(const DesignerWidget &widget)
{
    QString name = QString::fromLatin1(widget.objectName);
    if (name.isEmpty()) {
        name = QString::fromLatin1(widget.className);
        for (const char *prefix : {"ZvUtils", "ZvQt", "Zv"}) {
            if (name.startsWith(QLatin1String(prefix))) {
                name.remove(0, int(qstrlen(prefix)));
                break;
            }
        }
        name.replace(0, 1, name.at(0).toLower());
    }
    QString geometry;
    if (!widget.size.isEmpty())
        geometry
            = QStringLiteral("<property name=\"geometry\"><rect><x>0</x><y>0</y><width>%1</width><height>%2</height>"
                             "</rect></property>")
                  .arg(widget.size.width())
                  .arg(widget.size.height());
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">%3</widget></ui>")
        .arg(QLatin1String(widget.className), name, geometry);
}
