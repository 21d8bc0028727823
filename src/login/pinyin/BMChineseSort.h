#pragma once

#include "login/pinyin/BMChineseSortSetting.h"

#include <QList>
#include <QMetaProperty>
#include <QStringList>

//! Records in the order of a Chinese name's pinyin reading, grouped by the reading's first letter.
//! Pure functions for any thread; sorting some thousand names is work for another than the main
//! one.
namespace BMChineseSort {

//! Section titles ("#", "A" … "Z", no empty ones), and for each title its records in order.
template <typename Model>
struct Sections
{
    QStringList firstLetterArray;
    QList<QList<Model>> sortedModelArr;

    bool operator==(const Sections &) const = default;
};

//! The same by number: which of the names stand in each section.
using SectionsOfNames = Sections<qsizetype>;

SectionsOfNames sortAndGroup(const QStringList &names, const BMChineseSortSetting &setting);

//! Groups by the string property \a key of the records, which are gadgets.
template <typename Model>
Sections<Model> sortAndGroup(
    const QList<Model> &models, const char *key, const BMChineseSortSetting &setting)
{
    const QMetaObject &type = Model::staticMetaObject;
    const QMetaProperty property = type.property(type.indexOfProperty(key));
    QStringList names;
    names.reserve(models.size());
    for (const Model &model : models)
        names.append(property.readOnGadget(&model).toString());

    const SectionsOfNames positions = sortAndGroup(names, setting);
    Sections<Model> sections {positions.firstLetterArray, {}};
    sections.sortedModelArr.reserve(positions.sortedModelArr.size());
    for (const QList<qsizetype> &section : positions.sortedModelArr) {
        QList<Model> &sorted = sections.sortedModelArr.emplaceBack();
        sorted.reserve(section.size());
        for (const qsizetype position : section)
            sorted.append(models.at(position));
    }
    return sections;
}

}
