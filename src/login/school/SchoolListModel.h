#pragma once

#include "login/school/SchoolDirectory.h"

#include <QAbstractListModel>
#include <qqmlregistration.h>

#include <atomic>
#include <memory>
#include <optional>

//! The school chooser's table: all schools, or those that the search text finds, under their
//! section letters. Owned by ChooseSchoolViewController. Sorting and searching run on pool threads;
//! the model is reset when one is done.
class SchoolListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Tables are made in C++.")
    Q_PROPERTY(int count READ rowCount NOTIFY shownChanged)
    Q_PROPERTY(QStringList sectionTitles READ sectionTitles NOTIFY shownChanged)

public:
    enum Role { NameRole = Qt::UserRole, SectionRole };

    explicit SchoolListModel(QObject *parent = nullptr);
    ~SchoolListModel() override;

    //! Sorts and groups the schools, then shows them, or those of them that the present search text
    //! finds.
    void setSchools(const QList<DataModel> &schools);
    //! An empty text shows all at once. Of several searches under way only the newest is shown.
    void setSearchText(const QString &text);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    //! The school of a shown row; nothing for a row that is not there.
    std::optional<DataModel> schoolAt(int row) const;
    //! The sections that are shown, in order.
    QStringList sectionTitles() const { return m_sectionTitles; }
    //! The first row of a section, -1 when it is not shown.
    Q_INVOKABLE int rowOfSection(const QString &title) const;

Q_SIGNALS:
    //! The list that setSchools() gave is sorted and shown.
    void schoolsChanged();
    void shownChanged();

private:
    using Rows = std::vector<qsizetype>;

    void search();
    void show(std::shared_ptr<const SchoolDirectory> directory, std::optional<Rows> found);
    QStringList sectionsOf(const Rows &rows) const;
    qsizetype directoryRow(int row) const;

    std::shared_ptr<const SchoolDirectory> m_directory;
    QString m_searchText;
    std::optional<Rows> m_found; // nothing: all are shown
    QStringList m_sectionTitles;
    // The number of the newest request; a worker that finds its own outdated need not begin.
    std::shared_ptr<std::atomic<quint64>> m_newestSearch;
    quint64 m_newestSort = 0;
};
