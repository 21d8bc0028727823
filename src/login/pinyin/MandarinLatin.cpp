#include "login/pinyin/MandarinLatin.h"

#include "login/Logging.h"

#include <unicode/translit.h>

namespace {

// Compatibility forms become plain letters on the way, and the tone marks go.
constexpr char rules[] = "Han-Latin; NFKD; [:Mn:] Remove";

}

struct MandarinLatin::Converter
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> transliterator {
        icu::Transliterator::createInstance(rules, UTRANS_FORWARD, status)};
};

MandarinLatin::MandarinLatin()
    : m_converter(std::make_unique<Converter>())
{
    if (!m_converter->transliterator)
        qCWarning(lcLogin) << "no pinyin conversion here:" << u_errorName(m_converter->status);
}

MandarinLatin::~MandarinLatin() = default;

void MandarinLatin::prepare()
{
    MandarinLatin();
}

const QString &MandarinLatin::reading(char32_t character)
{
    const auto known = m_readings.constFind(character);
    if (known != m_readings.cend())
        return *known;
    auto text = icu::UnicodeString(static_cast<UChar32>(character));
    if (m_converter->transliterator)
        m_converter->transliterator->transliterate(text);
    return *m_readings.insert(
        character, QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length()));
}

QStringList MandarinLatin::syllables(QStringView text)
{
    QStringList syllables;
    bool open = false; // the last syllable still takes characters
    for (const char32_t character : text.toUcs4()) {
        if (QChar::isSpace(character)) {
            open = false;
            continue;
        }
        const bool isHan = QChar::script(character) == QChar::Script_Han;
        if (open && !isHan)
            syllables.last() += reading(character);
        else
            syllables += reading(character);
        open = !isHan;
    }
    return syllables;
}
