#include "schools/Schools.h"

#include "schools/Places.h"
#include "schools/SchoolNames.h"

#include <algorithm>

namespace sandbox {

namespace {

    constexpr int firstSiteId = 10001;
    constexpr size_t mostFound = 50;

    size_t cityIndex(std::string_view name)
    {
        const auto found = std::ranges::find(cities(), name, &City::name);
        return size_t(found - cities().begin());
    }

    //! The schools that people show and tests name.
    std::vector<School> showSchools()
    {
        return {
            {"厦门实验小学", "school01", 0, cityIndex("厦门")},
            {"长沙青松第一中学", "school02", 0, cityIndex("长沙"), false, Logo::SchemeRelative},
            {"长乐数智学校（本地部署）", std::string(localSiteCode), 0, cityIndex("福州"), true},
            {"沈阳新苑中学", "school03", 0, cityIndex("沈阳")},
            {"重庆巴山外国语学校", "school04", 0, cityIndex("重庆"), false, Logo::None},
            {"北京青松小学", "school05", 0, cityIndex("北京")},
            {"第三实验小学", "school06", 0, cityIndex("长春")},
            {"37中", "school07", 0, cityIndex("西安")},
            {"BDFZ双语学校", "school08", 0, cityIndex("广州")},
            {"e学堂在线学校", "school09", 0, cityIndex("杭州")},
            {"厦门实验小学（翔安校区）", "school10", 0, cityIndex("厦门")},
        };
    }

} // namespace

Schools::Schools(size_t count, const Addresses &addresses)
    : m_addresses(addresses)
    , m_schools(showSchools())
{
    const size_t shown = std::min(count, m_schools.size());
    m_schools.resize(count);
    for (size_t i = shown; i < count; ++i) {
        const SchoolName name = schoolName(i);
        m_schools[i] = {name.text, "s" + std::to_string(100'000 + i), 0, name.city};
    }
    for (size_t i = 0; i < count; ++i) {
        m_schools[i].siteId = firstSiteId + int(i);
        m_byCode[m_schools[i].siteCode] = i;
    }
}

const School *Schools::byCode(const std::string &siteCode) const
{
    const auto found = m_byCode.find(siteCode);
    return found == m_byCode.end() ? nullptr : &m_schools[found->second];
}

const School *Schools::bySite(const std::string &idOrCode) const
{
    const auto found = std::ranges::find(
        m_schools, idOrCode, [](const School &school) { return std::to_string(school.siteId); });
    return found == m_schools.end() ? byCode(idOrCode) : &*found;
}

Json Schools::row(const School &school) const
{
    Json row {{"full_name", school.fullName}, {"site_code", school.siteCode}};
    // Grown over the years, the site table mixes its types; clients have to bear it.
    if (school.isLocal) {
        const std::string server = "http://" + m_addresses.authority(Host::Local);
        row["is_local"] = "1";
        row["url"] = server + std::string(localPath);
        row["url_qe"] = server + std::string(localQePath);
    } else {
        const int age = school.siteId % 4;
        row["is_local"] = age == 0 ? Json(0) : age == 1 ? Json(nullptr) : Json("0");
        row["url"] = age == 2 ? Json("") : Json(nullptr);
        row["url_qe"] = row["url"];
    }
    row["site_id"] = school.siteId % 2 ? Json(std::to_string(school.siteId)) : Json(school.siteId);
    return row;
}

Json Schools::list() const
{
    Json list = Json::array();
    for (const School &school : m_schools)
        list.push_back(row(school));
    return list;
}

Json Schools::search(const std::string &key) const
{
    Json found = Json::array();
    for (const School &school : m_schools) {
        if (key.empty() || found.size() == mostFound)
            break;
        if (school.siteCode != key && school.fullName.find(key) == std::string::npos)
            continue;
        Json site = row(school);
        site["regions_id"] = std::to_string(school.city + 1);
        site["ver"] = "3.2";
        found.push_back(site);
    }
    return found;
}

Json Schools::regionTree() const
{
    std::vector<Json> schoolsOfCity(cities().size(), Json::array());
    for (const School &school : m_schools)
        schoolsOfCity[school.city].push_back(row(school));

    Json tree = Json::array();
    for (size_t i = 0; i < cities().size(); ++i) {
        const City &city = cities()[i];
        if (tree.empty() || tree.back()["name"] != city.province)
            tree.push_back({{"name", city.province}, {"children", Json::array()}});
        tree.back()["children"].push_back({{"name", city.name}, {"children", schoolsOfCity[i]}});
    }
    // A city whose schools have not joined yet.
    tree.back()["children"].push_back({{"name", "吐鲁番"}, {"children", Json::array()}});
    return tree;
}

} // namespace sandbox
