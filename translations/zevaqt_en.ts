<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name></name>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
</context>
<context>
    <name>ZevaUISetting</name>
    <message>
        <source>默认</source>
        <translation>Default</translation>
    </message>
    <message>
        <source>无法将选定图层置为当前图层。<byte value="xd"/>
<byte value="xd"/>
无法将选定图层置为当前图层:<byte value="xd"/>
 依赖外部参照的图层
 冻结的图层
</source>
        <translation>The selected layer cannot be made current.<byte value="xd"/>
<byte value="xd"/>
These layers cannot be made current:<byte value="xd"/>
 layers of external references
 frozen layers
</translation>
    </message>
    <message>
        <source>图层 - 无法置为当前</source>
        <translation>Layer - Cannot Be Made Current</translation>
    </message>
    <message>
        <source>当前图层将被关闭。
是否要使当前图层保持打开状态?
</source>
        <translation>The current layer will be switched off.
Do you want to keep the current layer on?
</translation>
    </message>
    <message>
        <source>不能冻结当前图层
</source>
        <translation>The current layer cannot be frozen.
</translation>
    </message>
    <message>
        <source>在锁定图层上有 %1 个对象未被更新。</source>
        <translation>Objects on locked layers that were not updated: %1.</translation>
    </message>
    <message>
        <source>标题</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>表头</source>
        <translation>Header</translation>
    </message>
    <message>
        <source>数据</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>仰视</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>左视</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>右视</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>前视</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>后视</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>未命名</source>
        <translation>Unnamed</translation>
    </message>
    <message>
        <source>世界</source>
        <translation>World</translation>
    </message>
    <message>
        <source>上一个</source>
        <translation>Previous</translation>
    </message>
</context>
<context>
    <name>ZvAccessibility</name>
    <message>
        <source>Places</source>
        <translation>Places</translation>
    </message>
    <message>
        <source>Even index colours from 10 to 248</source>
        <translation>Even index colours from 10 to 248</translation>
    </message>
    <message>
        <source>Odd index colours from 11 to 249</source>
        <translation>Odd index colours from 11 to 249</translation>
    </message>
    <message>
        <source>Index colours from 1 to 9</source>
        <translation>Index colours from 1 to 9</translation>
    </message>
    <message>
        <source>Greys from 250 to 255</source>
        <translation>Greys from 250 to 255</translation>
    </message>
    <message>
        <source>Index colour %1</source>
        <translation>Index colour %1</translation>
    </message>
    <message>
        <source>Field of hue and saturation</source>
        <translation>Field of hue and saturation</translation>
    </message>
    <message>
        <source>Strip of lightness</source>
        <translation>Strip of lightness</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Page</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Colour</translation>
    </message>
    <message>
        <source>List of pictures</source>
        <translation>List of pictures</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Layer</translation>
    </message>
    <message>
        <source>Line type</source>
        <translation>Line type</translation>
    </message>
    <message>
        <source>Line weight</source>
        <translation>Line weight</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>Line types</source>
        <translation>Line types</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>Block</translation>
    </message>
    <message>
        <source>Block unit</source>
        <translation>Block unit</translation>
    </message>
    <message>
        <source>Dimension style</source>
        <translation>Dimension style</translation>
    </message>
    <message>
        <source>Gradient</source>
        <translation>Gradient</translation>
    </message>
    <message>
        <source>Hatch pattern</source>
        <translation>Hatch pattern</translation>
    </message>
    <message>
        <source>Material</source>
        <translation>Material</translation>
    </message>
    <message>
        <source>Multileader style</source>
        <translation>Multileader style</translation>
    </message>
    <message>
        <source>Plot style</source>
        <translation>Plot style</translation>
    </message>
    <message>
        <source>Plot style table</source>
        <translation>Plot style table</translation>
    </message>
    <message>
        <source>Shade plot</source>
        <translation>Shade plot</translation>
    </message>
    <message>
        <source>Cell style of the column</source>
        <translation>Cell style of the column</translation>
    </message>
    <message>
        <source>Cell style of the row</source>
        <translation>Cell style of the row</translation>
    </message>
    <message>
        <source>Cell style</source>
        <translation>Cell style</translation>
    </message>
    <message>
        <source>Table style</source>
        <translation>Table style</translation>
    </message>
    <message>
        <source>Text style</source>
        <translation>Text style</translation>
    </message>
    <message>
        <source>Coordinate system</source>
        <translation>Coordinate system</translation>
    </message>
    <message>
        <source>View</source>
        <translation>View</translation>
    </message>
    <message>
        <source>Choose a colour</source>
        <translation>Choose a colour</translation>
    </message>
</context>
<context>
    <name>ZvCadPrintPreviewDialog</name>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>窗口缩放</source>
        <translation>Fit Width</translation>
    </message>
    <message>
        <source>缩放为原窗口</source>
        <translation>Fit Page</translation>
    </message>
    <message>
        <source>放大</source>
        <translation>Zoom In</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Zoom Out</translation>
    </message>
    <message>
        <source>打印</source>
        <translation>Print</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Print Preview</source>
        <translation>Print Preview</translation>
    </message>
</context>
<context>
    <name>ZvColorComboBox</name>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>ZvColorComboBox</source>
        <translation>ZvColorComboBox</translation>
    </message>
    <message>
        <source>使用当前项</source>
        <translation>Use Current</translation>
    </message>
    <message>
        <source>选择颜色...</source>
        <translation>Select Colour...</translation>
    </message>
    <message>
        <source>data err: index(%1)</source>
        <translation>data err: index(%1)</translation>
    </message>
</context>
<context>
    <name>ZvColorDialog</name>
    <message>
        <source>选择颜色</source>
        <translation>Select Colour</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>索引颜色</source>
        <translation>Index Colour</translation>
    </message>
    <message>
        <source>真彩色</source>
        <translation>True Colour</translation>
    </message>
</context>
<context>
    <name>ZvColorNames</name>
    <message>
        <source>红</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>黄</source>
        <translation>Yellow</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>青</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>洋红</source>
        <translation>Magenta</translation>
    </message>
    <message>
        <source>白</source>
        <translation>White</translation>
    </message>
    <message>
        <source>颜色 %1</source>
        <translation>Colour %1</translation>
    </message>
    <message>
        <source>黑</source>
        <translation>Black</translation>
    </message>
</context>
<context>
    <name>ZvHSLWnd</name>
    <message>
        <source>色调(&amp;U)</source>
        <translation>H&amp;ue</translation>
    </message>
    <message>
        <source>饱和度(&amp;S)</source>
        <translation>&amp;Saturation</translation>
    </message>
    <message>
        <source>亮度(&amp;L)</source>
        <translation>&amp;Lightness</translation>
    </message>
</context>
<context>
    <name>ZvIndexColorWnd</name>
    <message>
        <source>不是有效的颜色名或值。</source>
        <translation>This is not a valid colour name or value.</translation>
    </message>
    <message>
        <source>Zevara 颜色索引(ACI):</source>
        <translation>Zevara Colour Index (ACI):</translation>
    </message>
    <message>
        <source>ByLayer(&amp;L)</source>
        <translation>By&amp;Layer</translation>
    </message>
    <message>
        <source>ByBlock(&amp;K)</source>
        <translation>ByBloc&amp;k</translation>
    </message>
    <message>
        <source>颜色(&amp;C):</source>
        <translation>&amp;Colour:</translation>
    </message>
    <message>
        <source>索引颜色: %1</source>
        <translation>Index colour: %1</translation>
    </message>
    <message>
        <source>RGB: %1, %2, %3</source>
        <translation>RGB: %1, %2, %3</translation>
    </message>
</context>
<context>
    <name>ZvLayerUltralComboBox</name>
    <message>
        <source>开/关图层</source>
        <translation>Switch the layer on or off</translation>
    </message>
    <message>
        <source>在所有视口中冻结/解冻</source>
        <translation>Freeze or thaw the layer in all viewports</translation>
    </message>
    <message>
        <source>锁定/解锁图层</source>
        <translation>Lock or unlock the layer</translation>
    </message>
    <message>
        <source>图层颜色</source>
        <translation>Colour of the layer</translation>
    </message>
</context>
<context>
    <name>ZvLineTypeComboBox</name>
    <message>
        <source>其他...</source>
        <translation>Other...</translation>
    </message>
</context>
<context>
    <name>ZvLineWidthComboBox</name>
    <message>
        <source>使用对象线宽</source>
        <translation>Use Object&apos;s Line Weight</translation>
    </message>
</context>
<context>
    <name>ZvQtFileDialogImpl</name>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>未找到文件</source>
        <translation> - File Not Found</translation>
    </message>
    <message>
        <source>
文件名无效</source>
        <translation>
The file name is not valid.</translation>
    </message>
    <message>
        <source> %1 
文件名无效。</source>
        <translation> %1 
The file name is not valid.</translation>
    </message>
    <message>
        <source>文件名 - 文字长度</source>
        <translation>File Name - Length</translation>
    </message>
    <message>
        <source> 文件全名 不能多于 255 个字符。</source>
        <translation> The full file name may not have more than 255 characters.</translation>
    </message>
    <message>
        <source> %1 
您没有权限在此位置中保存文件。 
请与管理员联系以获得相应权限。

您想改为保存到 %2 的文档文件夹中吗?</source>
        <translation> %1 
You may not save files in this folder. 
Please ask the administrator for permission.

Do you want to save to the documents folder of %2 instead?</translation>
    </message>
    <message>
        <source> %1 已经存在。
是否替换它？</source>
        <translation> %1 already exists.
Do you want to replace it?</translation>
    </message>
    <message>
        <source>输出数据</source>
        <translation>Output Data</translation>
    </message>
    <message>
        <source>我的电脑</source>
        <translation>Computer</translation>
    </message>
    <message>
        <source>用户</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>数据盘</source>
        <translation>Data Disk</translation>
    </message>
    <message>
        <source>桌面</source>
        <translation>Desktop</translation>
    </message>
    <message>
        <source>视频</source>
        <translation>Videos</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>文档</source>
        <translation>Documents</translation>
    </message>
    <message>
        <source>下载</source>
        <translation>Downloads</translation>
    </message>
    <message>
        <source>音乐</source>
        <translation>Music</translation>
    </message>
    <message>
        <source>备份分区</source>
        <translation>Backup Partition</translation>
    </message>
    <message>
        <source>引导分区</source>
        <translation>Boot Partition</translation>
    </message>
    <message>
        <source>&gt;2M不显示预览</source>
        <translation>No preview above 2 MB</translation>
    </message>
</context>
<context>
    <name>ZvQtLinetypeTableView</name>
    <message>
        <source>线型</source>
        <translation>Line Type</translation>
    </message>
    <message>
        <source>外观</source>
        <translation>Appearance</translation>
    </message>
    <message>
        <source>说明</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>全部选择(&amp;S)</source>
        <translation>&amp;Select All</translation>
    </message>
    <message>
        <source>全部清除(&amp;C)</source>
        <translation>&amp;Clear All</translation>
    </message>
    <message>
        <source>最大化列标题</source>
        <translation>Fit Columns to Contents</translation>
    </message>
    <message>
        <source>请选择单个线型。</source>
        <translation>Please select one line type.</translation>
    </message>
</context>
<context>
    <name>ZvQtMessageBox</name>
    <message>
        <source>确定(&amp;O)</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>取消(&amp;C)</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>终止(&amp;A)</source>
        <translation>&amp;Abort</translation>
    </message>
    <message>
        <source>重试(&amp;R)</source>
        <translation>&amp;Retry</translation>
    </message>
    <message>
        <source>忽略(&amp;I)</source>
        <translation>&amp;Ignore</translation>
    </message>
    <message>
        <source>是(&amp;Y)</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>否(&amp;N)</source>
        <translation>&amp;No</translation>
    </message>
</context>
<context>
    <name>ZvQtTaskDialog</name>
    <message>
        <source>确定(&amp;O)</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>是(&amp;Y)</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>否(&amp;N)</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>重试(&amp;R)</source>
        <translation>&amp;Retry</translation>
    </message>
    <message>
        <source>取消(&amp;C)</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>C&amp;lose</translation>
    </message>
</context>
<context>
    <name>ZvRGBWnd</name>
    <message>
        <source>红(&amp;R):</source>
        <translation>&amp;Red:</translation>
    </message>
    <message>
        <source>绿(&amp;G):</source>
        <translation>&amp;Green:</translation>
    </message>
    <message>
        <source>蓝(&amp;B):</source>
        <translation>&amp;Blue:</translation>
    </message>
</context>
<context>
    <name>ZvTrueColorWnd</name>
    <message>
        <source>不是有效的真彩色值。</source>
        <translation>This is not a valid true colour value.</translation>
    </message>
    <message>
        <source>颜色(&amp;C):</source>
        <translation>&amp;Colour:</translation>
    </message>
    <message>
        <source>  红:   %1</source>
        <translation>  Red:   %1</translation>
    </message>
    <message>
        <source>  绿:   %1</source>
        <translation>  Green:   %1</translation>
    </message>
    <message>
        <source>  蓝:   %1</source>
        <translation>  Blue:   %1</translation>
    </message>
    <message>
        <source>颜色模式(&amp;M):</source>
        <translation>Colour &amp;mode:</translation>
    </message>
    <message>
        <source>真彩色保存为<byte value="xd"/>
RGB:</source>
        <translation>Saved as<byte value="xd"/>
RGB:</translation>
    </message>
</context>
<context>
    <name>ZvUtilsBlockUnitComboBox</name>
    <message>
        <source>无单位</source>
        <translation>Unitless</translation>
    </message>
    <message>
        <source>英寸</source>
        <translation>Inches</translation>
    </message>
    <message>
        <source>英尺</source>
        <translation>Feet</translation>
    </message>
    <message>
        <source>英里</source>
        <translation>Miles</translation>
    </message>
    <message>
        <source>毫米</source>
        <translation>Millimetres</translation>
    </message>
    <message>
        <source>厘米</source>
        <translation>Centimetres</translation>
    </message>
    <message>
        <source>米</source>
        <translation>Metres</translation>
    </message>
    <message>
        <source>千米</source>
        <translation>Kilometres</translation>
    </message>
    <message>
        <source>微英寸</source>
        <translation>Microinches</translation>
    </message>
    <message>
        <source>密耳</source>
        <translation>Mils</translation>
    </message>
    <message>
        <source>码</source>
        <translation>Yards</translation>
    </message>
    <message>
        <source>埃</source>
        <translation>Angstroms</translation>
    </message>
    <message>
        <source>毫微米</source>
        <translation>Nanometres</translation>
    </message>
    <message>
        <source>分米</source>
        <translation>Decimetres</translation>
    </message>
    <message>
        <source>十米</source>
        <translation>Decametres</translation>
    </message>
    <message>
        <source>百米</source>
        <translation>Hectometres</translation>
    </message>
    <message>
        <source>百万公里</source>
        <translation>Gigametres</translation>
    </message>
    <message>
        <source>天文</source>
        <translation>Astronomical Units</translation>
    </message>
    <message>
        <source>光年</source>
        <translation>Light Years</translation>
    </message>
    <message>
        <source>秒差距</source>
        <translation>Parsecs</translation>
    </message>
</context>
<context>
    <name>ZvUtilsLayerComboBox</name>
    <message>
        <source>使用当前项</source>
        <translation>Use Current</translation>
    </message>
</context>
<context>
    <name>ZvUtilsPlotStyleNameComboBox</name>
    <message>
        <source>普通</source>
        <translation>Normal</translation>
    </message>
</context>
<context>
    <name>ZvUtilsPlotStyleTableComboBox</name>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
</context>
<context>
    <name>ZvUtilsTableCellColStyleComboBox</name>
    <message>
        <source>(无)</source>
        <translation>(None)</translation>
    </message>
</context>
<context>
    <name>ZvUtilsTableCellStyleComboBox</name>
    <message>
        <source>按行/列</source>
        <translation>By Row/Column</translation>
    </message>
</context>
<context>
    <name>ZvUtilsViewComboBox</name>
    <message>
        <source>当前</source>
        <translation>Current</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>仰视</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>左视</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>右视</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>前视</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>后视</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>西南等轴测</source>
        <translation>South-West Isometric</translation>
    </message>
    <message>
        <source>东南等轴测</source>
        <translation>South-East Isometric</translation>
    </message>
    <message>
        <source>东北等轴测</source>
        <translation>North-East Isometric</translation>
    </message>
    <message>
        <source>西北等轴测</source>
        <translation>North-West Isometric</translation>
    </message>
    <message>
        <source>视图管理器...</source>
        <translation>View Manager...</translation>
    </message>
</context>
</TS>
