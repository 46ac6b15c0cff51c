// SPDX-License-Identifier: MIT
#include "linetypeforms.h"

#include "db/zvdbsymboltable.h"
#include "textforms.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kMostProblems = 8; // lines of the message

QDialogButtonBox *makeButtons(QDialog &dialog)
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

QLabel *makeMessage()
{
    auto *label = new QLabel;
    label->setObjectName(QStringLiteral("message"));
    label->setAccessibleName(QCoreApplication::translate("LinetypeForms", "Message"));
    label->setWordWrap(true);
    label->setMinimumHeight(2 * label->fontMetrics().lineSpacing());
    return label;
}

QLineEdit *makeEdit(const char *id)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(QLatin1String(id));
    return edit;
}

} // namespace

// ---- NewLinetypeDialog

NewLinetypeDialog::NewLinetypeDialog(QWidget *parent)
    : QDialog(parent), m_name(makeEdit("nameEdit")), m_comments(makeEdit("commentsEdit")),
      m_pattern(makeEdit("patternEdit")), m_message(makeMessage()), m_buttons(makeButtons(*this))
{
    setObjectName(QStringLiteral("newLinetypeDialog"));
    setWindowTitle(tr("New Line Type"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_pattern->setText(QStringLiteral("A,12,-6"));
    m_pattern->setToolTip(tr("Lengths of dashes, gaps below 0, dots of 0; a text as [\"GAS\",STANDARD,S=4,X=-2,Y=-2]"));
    auto *form = new QFormLayout(this);
    form->addRow(tr("&Name:"), m_name);
    form->addRow(tr("D&escription:"), m_comments);
    form->addRow(tr("&Pattern:"), m_pattern);
    form->addRow(m_message);
    form->addRow(m_buttons);
    for (QLineEdit *edit : {m_name, m_comments, m_pattern})
        connect(edit, &QLineEdit::textChanged, this, &NewLinetypeDialog::check);
    check();
    resize(480, sizeHint().height());
}

void NewLinetypeDialog::tell(const QString &text)
{
    m_message->setText(text);
}

void NewLinetypeDialog::check()
{
    m_definition.name = toZvString(m_name->text().trimmed());
    m_definition.comments = toZvString(m_comments->text().trimmed());
    ZvString why;
    bool isGood = ZvDbLinetypeFile::parsePattern(toZvString(m_pattern->text()), m_definition.elements, why);
    if (!ZvDbSymbolTableRecord::isValidName(m_definition.name)) {
        isGood = false;
        why = m_definition.name.isEmpty() ? ZvString()
                                          : toZvString(tr("a name must not hold < > / \\ \" : ; ? * = ` |"));
    }
    tell(isGood ? QString() : toQString(why));
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isGood);
}

// ---- LoadLinetypesDialog

QString LoadLinetypesDialog::standardFile()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/linetypes/linetypes.lin");
}

LoadLinetypesDialog::LoadLinetypesDialog(const ZvDbDatabase &database, QWidget *parent)
    : QDialog(parent), m_database(database), m_path(makeEdit("pathEdit")), m_list(new QListWidget),
      m_redefine(new QCheckBox(tr("&Change those that the drawing has"))), m_message(makeMessage()),
      m_buttons(makeButtons(*this))
{
    setObjectName(QStringLiteral("loadLinetypesDialog"));
    setWindowTitle(tr("Load Line Types"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_path->setAccessibleName(tr("Line type file"));
    m_list->setObjectName(QStringLiteral("definitionList"));
    m_list->setAccessibleName(tr("Line types of the file"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setUniformItemSizes(true);
    m_redefine->setObjectName(QStringLiteral("redefineBox"));
    auto *browseButton = new QPushButton(tr("&Browse..."));
    browseButton->setObjectName(QStringLiteral("browseButton"));
    browseButton->setAutoDefault(false);
    auto *label = new QLabel(tr("&File:"));
    label->setBuddy(m_path);
    auto *fileRow = new QHBoxLayout;
    fileRow->addWidget(label);
    fileRow->addWidget(m_path, 1);
    fileRow->addWidget(browseButton);
    auto *column = new QVBoxLayout(this);
    column->addLayout(fileRow);
    column->addWidget(m_list, 1);
    column->addWidget(m_redefine);
    column->addWidget(m_message);
    column->addWidget(m_buttons);

    connect(m_path, &QLineEdit::textChanged, this, &LoadLinetypesDialog::readFile);
    connect(browseButton, &QPushButton::clicked, this, &LoadLinetypesDialog::browse);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &LoadLinetypesDialog::check);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    m_path->setText(standardFile());
    m_list->setFocus();
    resize(560, 480);
}

QString LoadLinetypesDialog::path() const
{
    return m_path->text();
}

bool LoadLinetypesDialog::isRedefining() const
{
    return m_redefine->isChecked();
}

void LoadLinetypesDialog::browse()
{
    const QString filter = tr("Line types (*.lin);;All files (*)");
    const QString path = QFileDialog::getOpenFileName(this, tr("Line Type File"), m_path->text(), filter, nullptr,
                                                      QFileDialog::DontUseNativeDialog);
    if (!path.isEmpty())
        m_path->setText(path);
}

void LoadLinetypesDialog::readFile()
{
    m_file.read(toZvString(m_path->text()), m_database);
    m_list->clear();
    for (const ZvDbLinetypeDefinition &definition : m_file.definitions())
        m_list->addItem(tr("%1: %2").arg(toQString(definition.name), toQString(definition.comments)));
    QStringList problems = toQString(m_file.problemText()).split(QLatin1Char('\n'));
    if (problems.size() > kMostProblems) {
        const int more = problems.size() - kMostProblems + 1;
        problems = problems.mid(0, kMostProblems - 1);
        problems.append(tr("and %n more", nullptr, more));
    }
    m_message->setText(problems.join(QLatin1Char('\n')));
    check();
}

void LoadLinetypesDialog::check()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!m_list->selectedItems().isEmpty());
}

std::vector<ZvDbLinetypeDefinition> LoadLinetypesDialog::chosen() const
{
    std::vector<ZvDbLinetypeDefinition> list;
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->isSelected())
            list.push_back(m_file.definitions()[std::size_t(row)]);
    }
    return list;
}
