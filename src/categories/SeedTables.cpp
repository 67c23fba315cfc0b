#include "categories/SeedTables.h"

namespace quillbrook {

const std::array<CategorySeed, 13> categorySeedTable{{
    {1, "development", "开发工具", "#3B82F6"},
    {2, "browser", "浏览器", "#F59E0B"},
    {3, "communication", "通讯社交", "#10B981"},
    {4, "data_analysis", "数据分析", "#8B5CF6"},
    {5, "writing", "写作笔记", "#EC4899"},
    {6, "office", "办公套件", "#F97316"},
    {7, "system", "系统工具", "#6B7280"},
    {8, "entertainment", "娱乐", "#EF4444"},
    {9, "uncategorized", "未分类", "#9CA3AF"},
    {10, "gaming", "游戏", "#14B8A6"},
    {11, "photo_video", "摄影剪辑", "#F43F5E"},
    {12, "travel", "旅游", "#06B6D4"},
    {13, "finance", "理财", "#EAB308"},
}};

const std::array<PrefixSeed, 113> appPrefixSeedTable{{
    {"com.apple.dt.Xcode", "development"},
    {"dev.warp", "development"},
    {"com.microsoft.VSCode", "development"},
    {"com.tencent.codebuddycn", "development"},
    {"com.barebones.bbedit", "development"},
    {"org.jkiss.dbeaver", "development"},
    {"com.jetbrains", "development"},
    {"com.sublimetext", "development"},
    {"com.github.atom", "development"},
    {"com.coderunner", "development"},
    {"com.axosoft", "development"},
    {"com.sourcetree", "development"},
    {"com.docker", "development"},
    {"com.postmanlabs", "development"},
    {"com.rapidapi", "development"},
    {"com.transtex", "development"},
    {"com.fournova", "development"},
    {"com.apple.Safari", "browser"},
    {"com.google.Chrome", "browser"},
    {"com.microsoft.edgemac", "browser"},
    {"company.thebrowser.Browser", "browser"},
    {"org.mozilla.firefox", "browser"},
    {"com.operasoftware.Opera", "browser"},
    {"com.brave.Browser", "browser"},
    {"com.vivaldi.Vivaldi", "browser"},
    {"com.tencent.xinWeChat", "communication"},
    {"com.tencent.WeWorkMac", "communication"},
    {"com.electron.lark", "communication"},
    {"com.alibaba.DingTalkMac", "communication"},
    {"com.tencent.qq", "communication"},
    {"com.apple.MobileSMS", "communication"},
    {"com.apple.mail", "communication"},
    {"com.microsoft.Outlook", "communication"},
    {"com.sparkmailapp", "communication"},
    {"com.tinyspeck.slackmacgap", "communication"},
    {"com.tinyspeck.slack", "communication"},
    {"com.hnc.Discord", "communication"},
    {"com.teamspeak", "communication"},
    {"com.zoom.us", "communication"},
    {"us.zoom.xos", "communication"},
    {"com.cisco.webex", "communication"},
    {"com.apple.FaceTime", "communication"},
    {"5ZSL2CJU2T.com.dingtalk", "communication"},
    {"com.tableausoftware", "data_analysis"},
    {"com.microsoft.Excel", "data_analysis"},
    {"com.google.Chrome.app.*.sheets", "data_analysis"},
    {"md.obsidian", "writing"},
    {"com.apple.Notes", "writing"},
    {"com.bloombuilt.dayone-mac", "writing"},
    {"com.notion.notion", "writing"},
    {"com.evernote", "writing"},
    {"com.bear", "writing"},
    {"com.ulyssesapp", "writing"},
    {"com.craftdoc", "writing"},
    {"com.apple.TextEdit", "writing"},
    {"com.kingsoft.wpsoffice.mac", "office"},
    {"com.apple.Keynote", "office"},
    {"com.apple.iWork.Pages", "office"},
    {"com.apple.iWork.Numbers", "office"},
    {"com.microsoft.Word", "office"},
    {"com.microsoft.Powerpoint", "office"},
    {"com.libreoffice", "office"},
    {"com.apple.finder", "system"},
    {"com.apple.systempreferences", "system"},
    {"com.apple.systemsettings", "system"},
    {"com.apple.ActivityMonitor", "system"},
    {"com.apple.AppStore", "system"},
    {"com.apple.Terminal", "system"},
    {"com.apple.AddressBook", "system"},
    {"com.apple.iCal", "system"},
    {"com.apple.loginwindow", "system"},
    {"com.apple.Preview", "system"},
    {"com.apple.QuickLookUIFramework", "system"},
    {"com.apple.DiskUtility", "system"},
    {"com.apple.Console", "system"},
    {"cn.tarnlow.quillbrook", "system"},
    {"com.ploverton.ploverton", "system"},
    {"com.apple.dt.Instruments", "system"},
    {"com.apple.Music", "entertainment"},
    {"com.apple.TV", "entertainment"},
    {"com.apple.podcasts", "entertainment"},
    {"com.spotify.client", "entertainment"},
    {"com.netflix", "entertainment"},
    {"com.apple.QuickTimePlayerX", "entertainment"},
    {"com.videolan.vlc", "entertainment"},
    {"com.tencent.tenvideo", "entertainment"},
    {"com.iqiyi", "entertainment"},
    {"com.bilibili", "entertainment"},
    {"com.valvesoftware.steam", "gaming"},
    {"com.epicgames", "gaming"},
    {"com.mojang.minecraft", "gaming"},
    {"com.blizzard", "gaming"},
    {"com.riotgames", "gaming"},
    {"com.ea.origin", "gaming"},
    {"com.heroicgameslauncher", "gaming"},
    {"com.tencent.WeGame", "gaming"},
    {"com.adobe.Photoshop", "photo_video"},
    {"com.adobe.LightroomClassic", "photo_video"},
    {"com.adobe.Lightroom", "photo_video"},
    {"com.adobe.PremierePro", "photo_video"},
    {"com.adobe.AfterEffects", "photo_video"},
    {"com.adobe.illustrator", "photo_video"},
    {"com.apple.FinalCut", "photo_video"},
    {"com.blackmagic-design", "photo_video"},
    {"com.lemon.lv", "photo_video"},
    {"com.seriflabs.affinityphoto", "photo_video"},
    {"com.seriflabs.affinitydesigner", "photo_video"},
    {"com.figma.Desktop", "photo_video"},
    {"com.captureone", "photo_video"},
    {"com.apple.Maps", "travel"},
    {"com.google.GoogleEarthPro", "travel"},
    {"com.silverwiz.moneywiz", "finance"},
    {"com.alipay", "finance"},
}};

const std::map<std::string_view, std::string_view>& categoryColors()
{
    static const auto kColors = [] {
        std::map<std::string_view, std::string_view> colors;
        for (const CategorySeed& category : categorySeedTable) {
            colors.emplace(category.key, category.color);
        }
        return colors;
    }();
    return kColors;
}

const std::map<std::string_view, std::int64_t>& categoryIdByKey()
{
    static const auto kIds = [] {
        std::map<std::string_view, std::int64_t> ids;
        for (const CategorySeed& category : categorySeedTable) {
            ids.emplace(category.key, category.id);
        }
        return ids;
    }();
    return kIds;
}

const std::vector<SelectableCategory>& selectableCategories()
{
    static const auto kSelectable = [] {
        std::vector<SelectableCategory> selectable;
        for (const CategorySeed& category : categorySeedTable) {
            if (category.key != kUncategorizedKey) {
                selectable.push_back({category.label, category.id});
            }
        }
        return selectable;
    }();
    return kSelectable;
}

} // namespace quillbrook
