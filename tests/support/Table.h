#pragma once

#include "support/Patience.h"

#include <tuple>

//! The rows of a data-driven test, whose columns have their names where they are read:
//! `Table<int, int>::rows({{"half", 1, 2}})`, and `const auto [in, out] = Table<int, int>::row()`.
template <typename... Columns>
struct Table
{
    using Row = std::tuple<Columns...>;

    static void rows(std::initializer_list<std::tuple<const char *, Columns...>> all)
    {
        QTest::addColumn<Row>("row");
        const auto add = [](const char *name, const Columns &...columns) {
            QTest::newRow(name) << Row(columns...);
        };
        for (const auto &row : all)
            std::apply(add, row);
    }

    static Row row()
    {
        QFETCH(const Row, row);
        return row;
    }
};
