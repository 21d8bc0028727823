#include "schools/Notices.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace sandbox {

namespace {

    //! The member's new value, or the one before where it is absent.
    std::string chosen(const Json &description, const std::string &member,
        const std::string &before, std::initializer_list<std::string> values)
    {
        if (!description.contains(member))
            return before;
        const Json &value = description[member];
        if (!value.is_string()
            || std::ranges::find(values, value.get<std::string>()) == values.end())
            throw std::invalid_argument("\"" + member + "\" has no such value: " + value.dump());
        return value.get<std::string>();
    }

    std::string buildAfter(const std::string &build)
    {
        int number = 0;
        std::from_chars(build.data(), build.data() + build.size(), number);
        return std::to_string(number + 1);
    }

} // namespace

Notices::Notices(const Addresses &hosts)
    : m_addresses(hosts)
{
}

void Notices::set(const Json &description)
{
    if (!description.is_object())
        throw std::invalid_argument("notices are an object with \"ad\" and \"update\"");
    const std::lock_guard lock(m_mutex);
    const std::string ad = chosen(description, "ad", m_ad, {"none", "still", "animated"});
    m_update = chosen(description, "update", m_update, {"none", "optional", "forced"});
    m_ad = ad;
}

Json Notices::description() const
{
    const std::lock_guard lock(m_mutex);
    return {{"ad", m_ad}, {"update", m_update}};
}

void Notices::reset()
{
    const std::lock_guard lock(m_mutex);
    m_ad = m_update = "none";
}

Json Notices::ads() const
{
    const std::lock_guard lock(m_mutex);
    const std::string link = m_addresses.base(Host::Rb) + "portal/outlink.html";
    if (m_ad == "still")
        return Json::array(
            {{{"img_url", "//" + m_addresses.authority(Host::Content) + "/images/ad-still.png"},
                {"link_url", link}}});
    if (m_ad == "animated")
        return Json::array(
            {{{"img_url", m_addresses.base(Host::Content) + "images/ad-animated.gif"},
                {"link_url", link}}});
    return Json::array();
}

Json Notices::update(const std::string &currentBuild) const
{
    const std::lock_guard lock(m_mutex);
    // The newest build is the one that asks, until somebody publishes another.
    if (m_update == "none")
        return {{"bulid_no", currentBuild}, {"is_force", "0"}, {"version_content", ""}};
    const bool forced = m_update == "forced";
    return {{"bulid_no", buildAfter(currentBuild)}, {"is_force", forced ? "1" : "0"},
        {"version_content",
            forced ? "当前版本已停止服务，请更新到最新版本后重新登录。"
                   : "1. 成长手册支持批量上传照片\n2. 扫码签到更快更准\n3. 修复了一些已知问题"}};
}

} // namespace sandbox
