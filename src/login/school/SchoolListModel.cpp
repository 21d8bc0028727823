#include "login/school/SchoolListModel.h"

#include "login/form/Background.h"

SchoolListModel::SchoolListModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_directory(std::make_shared<SchoolDirectory>())
    , m_newestSearch(std::make_shared<std::atomic<quint64>>(0))
{
}

SchoolListModel::~SchoolListModel()
{
    ++*m_newestSearch;
}

void SchoolListModel::setSchools(const QList<DataModel> &schools)
{
    const auto sort = ++m_newestSort;
    inBackground(
        this, [schools] { return std::make_shared<const SchoolDirectory>(schools); },
        [this, sort](std::shared_ptr<const SchoolDirectory> directory) {
            if (sort != m_newestSort)
                return;
            show(std::move(directory), std::nullopt);
            if (!m_searchText.isEmpty())
                search();
            Q_EMIT schoolsChanged();
        });
}

void SchoolListModel::setSearchText(const QString &text)
{
    m_searchText = text;
    search();
}

void SchoolListModel::search()
{
    const quint64 number = ++*m_newestSearch;
    if (m_searchText.isEmpty()) {
        if (m_found)
            show(m_directory, std::nullopt);
        return;
    }
    inBackground(
        this,
        [directory = m_directory, newest = m_newestSearch, text = m_searchText, number] {
            return *newest == number ? directory->rowsContaining(text) : Rows();
        },
        [this, number](Rows rows) {
            if (*m_newestSearch == number)
                show(m_directory, std::move(rows));
        });
}

void SchoolListModel::show(
    std::shared_ptr<const SchoolDirectory> directory, std::optional<Rows> found)
{
    beginResetModel();
    m_directory = std::move(directory);
    m_found = std::move(found);
    m_sectionTitles = m_found ? sectionsOf(*m_found) : m_directory->firstLetterArray();
    endResetModel();
    Q_EMIT shownChanged();
}

QStringList SchoolListModel::sectionsOf(const Rows &rows) const
{
    QStringList titles;
    for (const qsizetype row : rows) {
        const QString &section = m_directory->section(row);
        if (titles.isEmpty() || titles.last() != section)
            titles.append(section);
    }
    return titles;
}

qsizetype SchoolListModel::directoryRow(int row) const
{
    return m_found ? (*m_found)[size_t(row)] : row;
}

int SchoolListModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return int(m_found ? qsizetype(m_found->size()) : m_directory->size());
}

QVariant SchoolListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const qsizetype row = directoryRow(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return m_directory->school(row).aName;
    case SectionRole:
        return m_directory->section(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> SchoolListModel::roleNames() const
{
    return {{NameRole, "aName"}, {SectionRole, "section"}};
}

std::optional<DataModel> SchoolListModel::schoolAt(int row) const
{
    if (row < 0 || row >= rowCount())
        return std::nullopt;
    return m_directory->school(directoryRow(row));
}

int SchoolListModel::rowOfSection(const QString &title) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (m_directory->section(directoryRow(row)) == title)
            return row;
    }
    return -1;
}
