// SPDX-License-Identifier: MIT
#include "controlpage.h"

#include "updatebushost.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <climits>
#include <iterator>

namespace {

constexpr int kLongList = 300;
constexpr int kLogLines = 500;
constexpr int kLogHeight = 4; // lines
constexpr int kStatesWidth = 430; // pixels
constexpr int kSettingsWidth = 310;

const struct
{
    ControlPageData::State state;
    const char *suffix;
    const char *label;
} kStates[] = {
    {ControlPageData::kUnhooked, "", QT_TRANSLATE_NOOP("ControlPages", "Ordinary")},
    {ControlPageData::kHooked, "Hooked", QT_TRANSLATE_NOOP("ControlPages", "Hooked")},
    {ControlPageData::kBlank, "Blank", QT_TRANSLATE_NOOP("ControlPages", "Blank")},
    {ControlPageData::kDisabled, "Disabled", QT_TRANSLATE_NOOP("ControlPages", "Disabled")},
    {ControlPageData::kLong, "Long", QT_TRANSLATE_NOOP("ControlPages", "Long list")},
};

/// Properties that show again what another one does, or that are of no use by hand.
const char *const kPassedOver[] = {"currentText", "html", "markdown", "documentTitle", "displayText"};

QString text(const char *english)
{
    return QCoreApplication::translate("ControlPages", english);
}

void fillLongList(QWidget &control)
{
    auto *combo = qobject_cast<QComboBox *>(&control);
    if (!combo)
        return;
    QStringList rows;
    for (int i = 1; i <= kLongList; ++i)
        rows << text("Row %1").arg(i, 4, 10, QLatin1Char('0'));
    combo->addItems(rows);
}

/// "maxVisibleItems" as "Max visible items".
QString spacedName(const char *property)
{
    QString name;
    for (const QChar sign : QString::fromLatin1(property)) {
        if (sign.isUpper())
            name += QLatin1Char(' ');
        name += sign.toLower();
    }
    name[0] = name[0].toUpper();
    return name;
}

/// The field for a property: without a type where there is none for such values.
ValueKind kindOf(const QMetaProperty &property, const QVariant &value)
{
    ValueKind kind;
    if (property.isFlagType())
        return kind;
    if (property.isEnumType()) {
        const QMetaEnum values = property.enumerator();
        for (int i = 0; i < values.keyCount(); ++i) {
            kind.choices << QString::fromLatin1(values.key(i));
            if (values.value(i) == value.toInt())
                kind.initial = i;
        }
        return kind;
    }
    kind.initial = value;
    kind.most = INT_MAX; // of what has no bounds
    return kind;
}

QScrollArea *scrolled(QWidget *content)
{
    auto *area = new QScrollArea;
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

} // namespace

QWidget *makePageHead(const QString &name, const QString &purpose)
{
    auto *head = new QWidget;
    auto *column = new QVBoxLayout(head);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto *title = new QLabel(name);
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    title->setFont(font);
    auto *sentence = new QLabel(purpose);
    sentence->setWordWrap(true);
    column->addWidget(title);
    column->addWidget(sentence);
    return head;
}

ControlPage::ControlPage(const ControlPageData &data, QWidget *parent)
    : QWidget(parent), m_lines(new QPlainTextEdit(this)), m_log([this](const QString &line) { tell(line); })
{
    setObjectName(QLatin1String(data.className));
    auto *column = new QVBoxLayout(this);
    column->addWidget(makePageHead(QLatin1String(data.className), text(data.purpose)));
    auto *middle = new QSplitter;
    middle->setChildrenCollapsible(false);
    middle->addWidget(makeStates(data));
    middle->addWidget(makeSettings(data));
    middle->setSizes({kStatesWidth, kSettingsWidth});
    middle->setStretchFactor(0, 1);
    column->addWidget(middle, 1);
    column->addWidget(makeLog());
    for (QWidget *control : qAsConst(m_controls)) {
        if (m_showsClass)
            m_log.listen(*control, nameOf(*control), QWidget::staticMetaObject, data.unheard);
    }
    if (data.finish)
        data.finish(*this);
}

ControlPage::~ControlPage()
{
    hide(); // a field that loses the keyboard tells so, and the log is still there
}

QString ControlPage::nameOf(const QWidget &control)
{
    return control.property("id").toString();
}

void ControlPage::tell(const QString &line)
{
    m_lines->appendPlainText(line);
}

void ControlPage::addSetting(const QString &label, QWidget *field)
{
    field->setAccessibleName(label);
    field->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_settings->insertRow(m_ownSettings++, label, field);
}

QWidget *ControlPage::makeStates(const ControlPageData &data)
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    auto *form = data.columns ? nullptr : new QFormLayout;
    auto *grid = data.columns ? new QGridLayout : nullptr;
    column->addLayout(form ? static_cast<QLayout *>(form) : grid);
    column->addStretch();
    const auto add = [&](const char *suffix, const char *label, QWidget *control) {
        const QString id = QLatin1String(data.id) + QLatin1String(suffix);
        control->setProperty("id", id);
        if (control->objectName().isEmpty()) // it is a state of some classes
            control->setObjectName(id);
        control->setAccessibleName(text(label));
        if (form) {
            form->addRow(text(label), control);
        } else {
            const int row = m_controls.size() / data.columns * 2;
            const int place = m_controls.size() % data.columns;
            grid->addWidget(new QLabel(text(label)), row, place);
            grid->addWidget(control, row + 1, place);
        }
        m_controls << control;
    };
    for (const auto &row : kStates) {
        if (!(data.states & row.state))
            continue;
        QWidget *control = data.make(row.state == ControlPageData::kHooked, content);
        if (row.state == ControlPageData::kBlank)
            UpdateBusHost::showNothing(*control);
        if (row.state == ControlPageData::kLong)
            data.fillLong ? data.fillLong(*control) : fillLongList(*control);
        if (row.state == ControlPageData::kDisabled)
            control->setEnabled(false);
        add(row.suffix, row.label, control);
    }
    for (const ControlVariant &variant : data.variants)
        add(variant.suffix, variant.label, variant.make(content));
    for (QWidget *control : qAsConst(m_controls)) {
        if (auto *combo = qobject_cast<QComboBox *>(control)) {
            combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
            combo->setMinimumContentsLength(8);
            combo->setSizePolicy(QSizePolicy::Expanding, combo->sizePolicy().verticalPolicy());
        }
    }
    m_showsClass = qstrcmp(m_controls.first()->metaObject()->className(), data.className) == 0
        || m_controls.first()->inherits(data.className);
    return scrolled(content);
}

QWidget *ControlPage::makeSettings(const ControlPageData &data)
{
    auto *content = new QWidget;
    m_settings = new QFormLayout(content);
    m_settings->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const ControlSetting &setting : data.settings) {
        const auto apply = [this, set = setting.apply](const QVariant &value) {
            for (QWidget *control : qAsConst(m_controls))
                set(*control, value);
        };
        QWidget *field = makeValueField(setting.kind, content, apply).widget;
        field->setObjectName(QLatin1String(setting.id));
        addSetting(text(setting.label), field);
    }
    if (m_showsClass)
        addProperties(*m_settings);
    return scrolled(content);
}

void ControlPage::addProperties(QFormLayout &form)
{
    QWidget &first = *m_controls.first();
    const QMetaObject *meta = first.metaObject();
    QVector<QMetaProperty> properties{meta->property(meta->indexOfProperty("enabled"))};
    for (int i = QWidget::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i)
        properties << meta->property(i);
    form.addRow(new QLabel(QStringLiteral("<b>%1</b>").arg(text("Properties"))));
    for (const QMetaProperty &property : qAsConst(properties)) {
        const bool isPassedOver = std::any_of(std::begin(kPassedOver), std::end(kPassedOver),
                                              [&](const char *name) { return qstrcmp(property.name(), name) == 0; });
        if (isPassedOver || !property.isWritable() || !property.isDesignable(&first))
            continue;
        const auto apply = [this, property](const QVariant &value) {
            const QVariant own = property.isEnumType() ? property.enumerator().value(value.toInt()) : value;
            for (QWidget *control : qAsConst(m_controls))
                control->setProperty(property.name(), own);
        };
        QWidget *field = makeValueField(kindOf(property, property.read(&first)), this, apply).widget;
        if (!field)
            continue;
        const QString label = spacedName(property.name());
        field->setObjectName(QLatin1String(property.name()));
        field->setAccessibleName(label);
        form.addRow(label, field);
    }
}

QWidget *ControlPage::makeLog()
{
    auto *box = new QWidget;
    auto *grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    m_lines->setObjectName(QStringLiteral("signalLog"));
    m_lines->setAccessibleName(text("Signals"));
    m_lines->setReadOnly(true);
    m_lines->setTabChangesFocus(true);
    m_lines->setUndoRedoEnabled(false);
    m_lines->setMaximumBlockCount(kLogLines);
    m_lines->setPlaceholderText(text("Nothing was emitted yet."));
    m_lines->setFixedHeight(kLogHeight * m_lines->fontMetrics().lineSpacing() + 12);
    auto *clear = new QPushButton(text("Clear"));
    clear->setObjectName(QStringLiteral("clearLog"));
    clear->setAccessibleName(text("Clear the signals"));
    clear->setAutoDefault(false);
    connect(clear, &QPushButton::clicked, m_lines, &QPlainTextEdit::clear);
    grid->addWidget(new QLabel(text("Signals")), 0, 0);
    grid->addWidget(clear, 0, 1, Qt::AlignRight);
    grid->addWidget(m_lines, 1, 0, 1, 2);
    return box;
}
