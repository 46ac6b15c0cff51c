// SPDX-License-Identifier: MIT
#include "dialogpage.h"

#include "bagjson.h"
#include "colordialogdemo.h"
#include "controlpage.h"
#include "filedialogdemo.h"
#include "messageboxdemo.h"
#include "printpreviewdemo.h"
#include "taskdialogdemo.h"
#include "textforms.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int kValueWidth = 190; // pixels

enum Column { kKey, kType, kWay, kValue, kMeaning, kColumns };

QString keyText(const char *english)
{
    return QCoreApplication::translate("DialogKeys", english);
}

QString jsonText(const QJsonValue &value)
{
    // A document holds arrays and objects only.
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

bool parseJson(const QString &text, QJsonValue &value)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        return false;
    value = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    return true;
}

ValueKind fieldKind(DialogKey::Kind kind)
{
    switch (kind) {
    case DialogKey::kInteger: {
        ValueKind number{0};
        number.least = -2147483648.0;
        number.most = 2147483647.0;
        return number;
    }
    case DialogKey::kBool:
        return {false};
    case DialogKey::kObject:
        return {};
    default:
        return {QString()};
    }
}

QVariant valueOf(const DialogKey &key, const ZvJsonPtr &member)
{
    switch (key.kind) {
    case DialogKey::kInteger:
        return member->asInteger();
    case DialogKey::kBool:
        return member->asBool();
    case DialogKey::kTree:
        return jsonText(jsonOfBag(member));
    default:
        return QString::fromUtf8(member->asString().c_str());
    }
}

QVariant initialOf(const DialogKey &key)
{
    const QString text = QString::fromUtf8(key.initial);
    if (key.kind == DialogKey::kInteger)
        return text.toInt();
    if (key.kind == DialogKey::kBool)
        return text == QLatin1String("true");
    return text;
}

QString wayText(unsigned way)
{
    QStringList parts;
    if (way & DialogKey::kParameter)
        parts << DialogPage::tr("in");
    if (way & DialogKey::kAnswer)
        parts << DialogPage::tr("out");
    if (way & DialogKey::kResult)
        parts << DialogPage::tr("result");
    return parts.join(QStringLiteral(", "));
}

QString typeText(const ZvJsonPtr &node)
{
    if (node.isNull() || node->isNullNode())
        return DialogPage::tr("null");
    static const struct
    {
        unsigned flag;
        const char *name;
    } types[] = {
        {IElementValueBase::kFlagArray, QT_TRANSLATE_NOOP("DialogPage", "array")},
        {IElementValueBase::kFlagObject, QT_TRANSLATE_NOOP("DialogPage", "tree")},
        {IElementValueBase::kFlagString, QT_TRANSLATE_NOOP("DialogPage", "text")},
        {IElementValueBase::kFlagBool, QT_TRANSLATE_NOOP("DialogPage", "bool")},
        {IElementValueBase::kFlagInteger, QT_TRANSLATE_NOOP("DialogPage", "integer")},
        {IElementValueBase::kFlagDouble, QT_TRANSLATE_NOOP("DialogPage", "number")},
        {IElementValueBase::kFlagReference, QT_TRANSLATE_NOOP("DialogPage", "object")},
        {IElementValueBase::kFlagId, QT_TRANSLATE_NOOP("DialogPage", "object id")},
    };
    for (const auto &type : types) {
        if (node->typeFlags() & type.flag)
            return DialogPage::tr(type.name);
    }
    return QString();
}

/// A bag's members as rows below \a parent.
void addMembers(QTreeWidgetItem &parent, const ZvJsonPtr &bag)
{
    const bool isBranch
        = !bag.isNull() && (bag->typeFlags() & (IElementValueBase::kFlagArray | IElementValueBase::kFlagObject));
    for (int i = 0; isBranch && i < bag->elementCount(); ++i) {
        const ZvJsonPtr member = bag->element(i);
        const QString key = bag->isArray() ? QString::number(i) : QString::fromUtf8(bag->keyAt(i).c_str());
        auto *row = new QTreeWidgetItem(&parent, {key, typeText(member)});
        addMembers(*row, member);
        if (row->childCount() == 0)
            row->setText(2, bagText(member));
        row->setExpanded(true);
    }
}

QVector<DialogDemo> examplesOf(const char *dialog)
{
    QVector<DialogDemo> examples;
    for (const QVector<DialogDemo> &demos :
         {messageBoxDemos(), taskDialogDemos(), colorDialogDemos(), fileDialogDemos(), printPreviewDemos()}) {
        for (const DialogDemo &demo : demos) {
            if (qstrcmp(demo.dialog, dialog) == 0)
                examples << demo;
        }
    }
    return examples;
}

} // namespace

DialogPage::DialogPage(const DialogDescription &dialog, QWidget *parent)
    : QWidget(parent), m_dialog(dialog), m_examples(examplesOf(dialog.name)), m_example(new QComboBox),
      m_keys(new QTableWidget), m_answers(new QTreeWidget)
{
    setObjectName(QLatin1String(dialog.name));
    auto *column = new QVBoxLayout(this);
    column->addWidget(makePageHead(QLatin1String(dialog.name), keyText(dialog.purpose)));

    auto *row = new QHBoxLayout;
    m_example->setObjectName(QStringLiteral("example"));
    m_example->setAccessibleName(tr("Example"));
    for (const DialogDemo &demo : qAsConst(m_examples))
        m_example->addItem(QString(demo.menuText).remove(QLatin1Char('&')));
    connect(m_example, qOverload<int>(&QComboBox::currentIndexChanged), this, &DialogPage::loadExample);
    auto *show = new QPushButton(tr("Show"));
    show->setObjectName(QStringLiteral("show"));
    show->setAutoDefault(false);
    connect(show, &QPushButton::clicked, this, &DialogPage::showDialog);
    row->addWidget(new QLabel(tr("Example")));
    row->addWidget(m_example, 1);
    row->addWidget(show);
    column->addLayout(row);

    m_answers->setObjectName(QStringLiteral("answers"));
    m_answers->setAccessibleName(tr("What the dialog gave back"));
    m_answers->setHeaderLabels({tr("What it gave back"), tr("Type"), tr("Value")});
    m_answers->setColumnWidth(0, 240);
    auto *middle = new QSplitter(Qt::Vertical);
    middle->setChildrenCollapsible(false);
    middle->addWidget(makeKeys());
    middle->addWidget(m_answers);
    middle->setStretchFactor(0, 5);
    middle->setStretchFactor(1, 2);
    column->addWidget(middle, 1);
    loadExample();
}

QWidget *DialogPage::makeKeys()
{
    m_keys->setObjectName(QStringLiteral("keys"));
    m_keys->setAccessibleName(tr("Keys"));
    m_keys->setColumnCount(kColumns);
    m_keys->setHorizontalHeaderLabels({tr("Key"), tr("Type"), tr("Way"), tr("Value"), tr("Meaning")});
    m_keys->setRowCount(m_dialog.keys.size());
    m_keys->verticalHeader()->hide();
    m_keys->setTabKeyNavigation(false);
    m_keys->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents); // long meanings
    m_keys->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_keys->setSelectionMode(QAbstractItemView::NoSelection);
    for (int row = 0; row < m_dialog.keys.size(); ++row) {
        const DialogKey &key = m_dialog.keys[row];
        const QString texts[kColumns] = {QLatin1String(key.name), keyText(dialogKeyKindName(key.kind)),
                                         wayText(key.way), QString(), keyText(key.meaning)};
        for (int column = 0; column < kColumns; ++column) {
            auto *item = new QTableWidgetItem(texts[column]);
            item->setFlags(Qt::ItemIsEnabled);
            item->setToolTip(texts[column]);
            m_keys->setItem(row, column, item);
        }
        Row entry{&key, nullptr, {}};
        if (key.way & DialogKey::kParameter) {
            entry.tick = m_keys->item(row, kKey);
            entry.tick->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
            entry.tick->setCheckState(Qt::Unchecked);
            // A value that is entered is meant to be passed.
            const auto changed = [tick = entry.tick](const QVariant &) { tick->setCheckState(Qt::Checked); };
            entry.field = makeValueField(fieldKind(key.kind), m_keys, changed);
            if (QWidget *field = entry.field.widget) {
                field->setObjectName(QLatin1String(key.name));
                field->setAccessibleName(QLatin1String(key.name));
                m_keys->setCellWidget(row, kValue, field);
            }
        }
        m_rows << entry;
    }
    for (const int column : {kKey, kType, kWay})
        m_keys->resizeColumnToContents(column);
    m_keys->setColumnWidth(kValue, kValueWidth);
    m_keys->horizontalHeader()->setStretchLastSection(true);
    return m_keys;
}

void DialogPage::loadExample()
{
    m_objects = nullptr;
    if (m_example->currentIndex() >= 0)
        m_objects = m_examples[m_example->currentIndex()].parameters();
    for (int place = 0; place < m_rows.size(); ++place) {
        const Row &row = m_rows.at(place);
        if (!row.tick)
            continue;
        const bool isThere = !m_objects.isNull() && m_objects->hasKey(row.key->name);
        if (row.field.widget)
            row.field.setValue(isThere ? valueOf(*row.key, m_objects->member(row.key->name)) : initialOf(*row.key));
        else
            m_keys->item(place, kValue)->setText(isThere ? tr("of the example") : QString());
        row.tick->setCheckState(isThere ? Qt::Checked : Qt::Unchecked);
    }
}

bool DialogPage::makeParameters(ZvJsonPtr &params) const
{
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    for (const Row &row : m_rows) {
        if (!row.tick || row.tick->checkState() != Qt::Checked)
            continue;
        const char *name = row.key->name;
        switch (row.key->kind) {
        case DialogKey::kInteger:
            bag->SetDataI(name, row.field.value().toInt());
            break;
        case DialogKey::kBool:
            bag->SetDataB(name, row.field.value().toBool());
            break;
        case DialogKey::kText:
            bag->SetDataS(name, row.field.value().toString().toUtf8().constData());
            break;
        case DialogKey::kWideText:
            bag->SetDataSW(name, toZvString(row.field.value().toString()));
            break;
        case DialogKey::kTree: {
            QJsonValue tree;
            if (!parseJson(row.field.value().toString(), tree))
                return false;
            bag->SetDataJ(name, bagOfJson(tree));
            break;
        }
        case DialogKey::kObject:
            if (!m_objects.isNull() && m_objects->hasKey(name))
                bag->SetDataO(name, m_objects->member(name)->asReference());
            break;
        }
    }
    params = bag;
    return true;
}

void DialogPage::showDialog()
{
    ZvJsonPtr params;
    m_answers->clear();
    if (!makeParameters(params)) {
        new QTreeWidgetItem(m_answers, {tr("A tree that is ticked is no JSON.")});
        return;
    }
    const int example = m_example->currentIndex();
    const auto surroundings = example >= 0 && m_examples[example].surroundings ? m_examples[example].surroundings()
                                                                               : std::shared_ptr<void>();
    showAnswers(runCommonDialog(m_dialog.name, params), params);
}

void DialogPage::showAnswers(const ZvJsonPtr &result, const ZvJsonPtr &params)
{
    auto *resultRow = new QTreeWidgetItem(m_answers, {tr("Result tree"), typeText(result)});
    addMembers(*resultRow, result);
    auto *paramsRow = new QTreeWidgetItem(m_answers, {tr("Parameters afterwards"), typeText(params)});
    addMembers(*paramsRow, params);
    for (int i = 0; i < paramsRow->childCount(); ++i) {
        QTreeWidgetItem *row = paramsRow->child(i);
        for (const DialogKey &key : m_dialog.keys) {
            if (!(key.way & DialogKey::kAnswer) || row->text(0) != QLatin1String(key.name))
                continue;
            QFont font = m_answers->font();
            font.setBold(true);
            for (int column = 0; column < 3; ++column)
                row->setFont(column, font);
        }
    }
    resultRow->setExpanded(true);
    paramsRow->setExpanded(true);
}
