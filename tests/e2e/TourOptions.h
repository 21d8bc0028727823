#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>
#include <variant>

//! What the tour was asked for.
struct TourOptions
{
    //! Set in the tour's own child processes: one life of the client each.
    struct Life
    {
        int number = 0;
        QUrl platform;
        QString profile;
    };

    QString out;
    QStringList only; //!< empty: all steps
    QSize size {390, 844};
    bool help = false;
    std::optional<Life> life;

    //! The arguments, the program's name left out, or one line that says what is wrong with them.
    static std::variant<TourOptions, QString> parse(const QStringList &arguments);
    static QString usage();

    //! The arguments that start a life of this tour.
    QStringList forLife(const Life &life) const;
};
