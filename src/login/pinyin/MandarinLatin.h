#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>

//! Chinese text as Latin letters without tone marks: "长沙BDFZ" reads zhang, sha, BDFZ.
//!
//! The conversion is slow, so each distinct character is converted once in the life of an object.
//! An object belongs to the thread that uses it. The first object of the process also loads the
//! conversion's rules, which takes far longer than a list of schools does: see prepare().
class MandarinLatin
{
public:
    MandarinLatin();
    ~MandarinLatin();

    //! Loads the rules, so that the first real conversion need not wait for them. Any thread.
    static void prepare();

    //! The text's syllables: one for each Chinese character, other characters together up to the
    //! next blank.
    QStringList syllables(QStringView text);

private:
    struct Converter;

    const QString &reading(char32_t character);

    std::unique_ptr<Converter> m_converter;
    QHash<char32_t, QString> m_readings;
};
