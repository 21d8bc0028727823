#pragma once

#include "model/DataModel.h"

#include <QList>
#include <QStringList>

#include <vector>

//! All schools in the order of their reading, ready to be searched. Made once, on a worker; it
//! never changes and may be read by any thread.
class SchoolDirectory
{
public:
    SchoolDirectory() = default;
    //! Sorts and groups: far too slow for the main thread.
    explicit SchoolDirectory(const QList<DataModel> &schools);

    qsizetype size() const { return m_schools.size(); }
    const DataModel &school(qsizetype row) const { return m_schools.at(row); }
    //! The title of the row's section.
    const QString &section(qsizetype row) const { return m_firstLetterArray.at(m_sections[row]); }
    const QStringList &firstLetterArray() const { return m_firstLetterArray; }

    //! The rows whose search key contains the text, whatever its case.
    std::vector<qsizetype> rowsContaining(const QString &text) const;

private:
    QList<DataModel> m_schools;
    QStringList m_firstLetterArray;
    std::vector<qsizetype> m_sections; // of each row, a position in m_firstLetterArray
    // All keys in one buffer, folded, each ended by a separator: a search is one walk through
    // contiguous memory.
    QString m_keys;
    std::vector<qsizetype> m_keyEnds;
};
