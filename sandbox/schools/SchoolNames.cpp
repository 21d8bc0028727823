#include "schools/SchoolNames.h"

#include "schools/Places.h"

#include <array>
#include <cstdint>

namespace sandbox {

namespace {

    constexpr std::array<std::string_view, 16> kinds {"小学", "中学", "实验小学", "实验中学",
        "高级中学", "外国语学校", "中心小学", "初级中学", "幼儿园", "职业技术学校",
        "九年一贯制学校", "附属小学", "附属中学", "国际学校", "特殊教育学校", "师范学校"};
    constexpr std::array<std::string_view, 24> proper {"青松", "育才", "长青", "沈园", "明德",
        "厦英", "单家", "曾厝", "育英", "文澜", "重阳", "博雅", "乐群", "行知", "朝晖", "解放路",
        "仇池", "朴园", "致远", "星光", "区家", "盛泽", "翟庄", "囍悦"};
    constexpr std::array<std::string_view, 12> ordinals {
        "一", "二", "三", "四", "五", "六", "七", "八", "九", "十", "十一", "二十三"};
    constexpr std::array<std::string_view, 10> latin {
        "ABC", "BDFZ", "IB", "STEM", "e", "K12", "VIP", "A+", "Sunny", "the Hill"};
    constexpr std::array<std::string_view, 6> campuses {
        "（东校区）", "（西校区）", "(新校区)", "　分校", " 分校", "（筹）"};
    constexpr std::array<std::string_view, 4> marks {"（新）", "·", "“小树苗”", "【民办】"};

    //! Spreads neighbouring numbers; the same on every machine, which the standard library's
    //! generators are not asked to be.
    uint64_t scatter(uint64_t x)
    {
        x += 0x9e3779b97f4a7c15;
        x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9;
        x = (x ^ (x >> 27)) * 0x94d049bb133111eb;
        return x ^ (x >> 31);
    }

    class Dice
    {
    public:
        explicit Dice(uint64_t seed)
            : m_state(scatter(seed))
        {
        }

        size_t roll(size_t sides)
        {
            m_state = scatter(m_state);
            return m_state % sides;
        }
        template <typename List>
        std::string one(const List &list)
        {
            return std::string(list[roll(list.size())]);
        }

    private:
        uint64_t m_state;
    };

} // namespace

SchoolName schoolName(size_t number)
{
    Dice dice(number);
    const size_t cityIndex = dice.roll(cities().size());
    const City &city = cities()[cityIndex];
    const std::string cityName(city.name);
    const std::string district = dice.one(city.districts);

    std::string text;
    switch (dice.roll(20)) {
    case 0:
        text = "第" + dice.one(ordinals) + dice.one(kinds);
        break;
    case 1:
        text = std::to_string(1 + dice.roll(400)) + "中";
        break;
    case 2:
        text = dice.one(latin) + dice.one(proper) + dice.one(kinds);
        break;
    case 3:
        text = dice.one(marks) + district + dice.one(kinds);
        break;
    case 4:
    case 5:
        text = cityName + "第" + dice.one(ordinals) + dice.one(kinds);
        break;
    case 6:
    case 7:
    case 8:
        text = district + dice.one(proper) + dice.one(kinds);
        break;
    case 9:
    case 10:
        text = cityName + district + "第" + dice.one(ordinals) + dice.one(kinds);
        break;
    case 11:
    case 12:
        text = dice.one(proper) + dice.one(kinds);
        break;
    case 13:
        text = (city.isMunicipality() ? cityName + "市" : std::string(city.province) + cityName)
            + district + dice.one(proper) + dice.one(kinds);
        break;
    default:
        text = cityName + "市" + district + dice.one(proper) + dice.one(kinds);
    }
    if (dice.roll(9) == 0)
        text += dice.one(campuses);
    return {text, cityIndex};
}

} // namespace sandbox
