#include "platform/linux/applications/KnownApplications.h"

#include "categories/CategoryStore.h"
#include "categories/RuleSet.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {
namespace {

struct Group {
    std::string_view category;
    std::vector<std::string_view> linuxIds;
};

/// Where each known application is meant to land.
const std::vector<Group>& groups()
{
    static const std::vector<Group> kGroups = {
        {"development",
            {"android-studio", "atom", "code", "code-insiders", "code-oss", "codeblocks",
                "codebuddy", "codium", "com.getpostman.postman", "cursor", "dbeaver", "dbeaver-ce",
                "dev.warp.warp", "docker-desktop", "eclipse", "emacs", "geany", "git-cola", "gitk",
                "gitkraken", "gvim", "insomnia", "intellij-idea-community",
                "io.dbeaver.dbeavercommunity", "jetbrains-clion", "jetbrains-datagrip",
                "jetbrains-goland", "jetbrains-idea", "jetbrains-idea-ce", "jetbrains-phpstorm",
                "jetbrains-pycharm", "jetbrains-pycharm-ce", "jetbrains-rider",
                "jetbrains-rubymine", "jetbrains-rustrover", "jetbrains-studio",
                "jetbrains-webstorm", "nvim", "org.gnome.builder", "org.gnome.gitg",
                "org.gnome.meld", "org.kde.kate", "org.kde.kdevelop", "org.qt-project.qtcreator",
                "postman", "pycharm-community", "qtcreator", "sqlitebrowser", "sublime_merge",
                "sublime_text", "vim", "vscodium"}},
        {"browser",
            {"brave-browser", "chromium", "chromium-browser", "chromium_chromium",
                "com.brave.browser", "com.google.chrome", "com.microsoft.edge", "firefox",
                "firefox-developer-edition", "firefox-esr", "firefox_firefox", "google-chrome",
                "google-chrome-beta", "librewolf", "microsoft-edge", "microsoft-edge-beta",
                "midori", "opera", "org.chromium.chromium", "org.gnome.epiphany", "org.kde.falkon",
                "org.mozilla.firefox", "org.qutebrowser.qutebrowser", "torbrowser",
                "vivaldi-stable"}},
        {"communication",
            {"bytedance-feishu", "bytedance-lark", "com.alibabainc.dingtalk",
                "com.discordapp.discord", "com.qq.im.deepin", "com.qq.qq",
                "com.qq.weixin.work.deepin", "com.slack.slack", "com.tencent.wechat",
                "com.tencent.wemeet", "dingtalk", "discord", "electronic-wechat", "element-desktop",
                "evolution", "feishu", "hexchat", "linuxqq", "org.gnome.evolution",
                "org.gnome.geary", "org.kde.kmail2", "org.mozilla.thunderbird", "org.signal.signal",
                "org.telegram.desktop", "pidgin", "qq", "signal-desktop", "slack",
                "teams-for-linux", "teamspeak3", "telegramdesktop", "thunderbird",
                "thunderbird-esr", "us.zoom.zoom", "wechat", "weixin", "wemeet", "wemeetapp",
                "zoom"}},
        {"data_analysis",
            {"gnumeric", "jamovi", "libreoffice-calc", "matlab", "octave", "org.gnumeric.gnumeric",
                "org.labplot.labplot", "org.octave.octave", "rstudio", "veusz"}},
        {"writing",
            {"featherpad", "gedit", "gnote", "joplin", "leafpad", "logseq", "md.obsidian.obsidian",
                "mousepad", "net.cozic.joplin_desktop", "notion", "notion-app", "obsidian",
                "org.gnome.gedit", "org.gnome.notes", "org.gnome.texteditor",
                "org.gnome.world.apostrophe", "org.kde.kwrite", "org.xfce.mousepad",
                "org.zim_wiki.zim", "pluma", "typora", "xed", "xpad", "zim"}},
        {"office",
            {"abiword", "libreoffice", "libreoffice-base", "libreoffice-draw",
                "libreoffice-impress", "libreoffice-math", "libreoffice-startcenter",
                "libreoffice-writer", "onlyoffice-desktopeditors", "org.kde.okular",
                "org.onlyoffice.desktopeditors", "scribus", "wps-office-et", "wps-office-pdf",
                "wps-office-prometheus", "wps-office-wpp", "wps-office-wps"}},
        {"system",
            {"alacritty", "atril", "caja", "caja-browser", "cn.tarnlow.quillbrook",
                "com.gexperts.tilix", "dde-file-manager", "debian-uxterm", "debian-xterm",
                "deepin-terminal", "eog", "evince", "foot", "gnome-control-center", "gnome-disks",
                "gnome-system-monitor", "gnome-terminal-server", "gparted", "guake", "htop",
                "kitty", "lxterminal", "mate-terminal", "nemo", "org.gnome.calendar",
                "org.gnome.console", "org.gnome.contacts", "org.gnome.diskutility", "org.gnome.eog",
                "org.gnome.evince", "org.gnome.logs", "org.gnome.loupe", "org.gnome.nautilus",
                "org.gnome.ptyxis", "org.gnome.settings", "org.gnome.software",
                "org.gnome.systemmonitor", "org.gnome.terminal", "org.kde.discover",
                "org.kde.dolphin", "org.kde.gwenview", "org.kde.konsole",
                "org.kde.plasma-systemmonitor", "org.kde.yakuake", "org.wezfurlong.wezterm",
                "pcmanfm", "pcmanfm-qt", "qterminal", "quillbrook", "ristretto", "rxvt-unicode",
                "systemsettings", "terminator", "thunar", "tilix", "urxvt", "uxterm",
                "xfce4-settings-manager", "xfce4-taskmanager", "xfce4-terminal", "xfdesktop",
                "xterm", "yakuake"}},
        {"entertainment",
            {"audacious", "bilibili", "clementine", "com.spotify.client", "com.stremio.stremio",
                "io.github.celluloid_player.celluloid", "io.mpv.mpv", "iqiyi", "kodi", "mpv",
                "netease-cloud-music", "org.gnome.music", "org.gnome.podcasts",
                "org.gnome.rhythmbox3", "org.gnome.totem", "org.kde.dragonplayer", "org.kde.elisa",
                "org.videolan.vlc", "qqmusic", "rhythmbox", "smplayer", "spotify",
                "tenvideo_universal", "totem", "tv.kodi.kodi", "vlc"}},
        {"gaming",
            {"aisleriot", "com.heroicgameslauncher.hgl", "com.mojang.minecraft",
                "com.valvesoftware.steam", "gnome-mines", "heroic", "lutris", "minecraft-launcher",
                "net.lutris.lutris", "net.supertuxkart.supertuxkart", "org.gnome.mines",
                "org.prismlauncher.prismlauncher", "sol", "steam", "steam_app", "supertuxkart"}},
        {"photo_video",
            {"audacity", "blender", "com.blackmagicdesign.resolve", "com.obsproject.studio",
                "darktable", "digikam", "figma-linux", "gimp", "gimp-2.10", "inkscape", "kdenlive",
                "krita", "obs", "org.audacityteam.audacity", "org.blender.blender",
                "org.darktable.darktable", "org.gimp.gimp", "org.gnome.shotwell",
                "org.inkscape.inkscape", "org.kde.digikam", "org.kde.kdenlive", "org.kde.krita",
                "org.openshot.openshot", "org.shotcut.shotcut", "rawtherapee", "resolve"}},
        {"travel", {"google-earth-pro", "josm", "org.gnome.maps", "org.kde.marble"}},
        {"finance",
            {"fr.free.homebank", "gnucash", "homebank", "kmymoney", "org.gnucash.gnucash",
                "org.kde.kmymoney", "org.kde.skrooge"}},
    };
    return kGroups;
}

/// The rules as a new store has them.
RuleSet seededRules(const StoreReader& store)
{
    for (const char* table : {"CREATE TABLE categories (id INTEGER PRIMARY KEY, key TEXT, "
                              "label TEXT, color TEXT)",
             "CREATE TABLE app_categories (id INTEGER PRIMARY KEY, match_key TEXT, match_type TEXT "
             "DEFAULT 'bundle_prefix', category_id INTEGER, source TEXT DEFAULT 'system', "
             "updated_at REAL DEFAULT 0, UNIQUE(match_key, match_type))"}) {
        store.exec(table);
    }
    const auto exec = [&store](const std::string& sql) { store.exec(sql); };
    CategoryStore::seedCategories(exec);
    CategoryStore::seedAppPrefixes(exec);
    return CategoryStore::loadRuleSet(store.handle());
}

TEST(KnownApplications, EachLandsInItsCategory)
{
    const TemporaryDirectory directory;
    const StoreReader store(directory.path() / "rules.db");
    const RuleSet rules = seededRules(store);
    std::size_t count = 0;
    for (const Group& group : groups()) {
        for (const std::string_view linuxId : group.linuxIds) {
            const std::string bundle(knownBundleIdentifier(linuxId));
            EXPECT_EQ(CategoryStore::classify(rules, bundle, "Any").key, group.category) << linuxId;
            ++count;
        }
    }
    EXPECT_EQ(count, knownApplications().size()) << "every row has its place here";
}

TEST(KnownApplications, StandInOrderAndOnce)
{
    const auto rows = knownApplications();
    EXPECT_EQ(
        std::ranges::adjacent_find(rows, std::ranges::greater_equal(), &KnownApplication::linuxId),
        rows.end());
}

TEST(KnownApplications, CapitalsDontMatter)
{
    EXPECT_EQ(knownBundleIdentifier("Firefox"), "org.mozilla.firefox");
    EXPECT_EQ(knownBundleIdentifier("XTerm"), "com.apple.Terminal.xterm");
}

TEST(KnownApplications, OthersAreNotKnown)
{
    EXPECT_EQ(knownBundleIdentifier("org.example.Unheard"), "");
    EXPECT_EQ(knownBundleIdentifier(""), "");
    EXPECT_EQ(knownBundleIdentifier("zzz"), "");
}

TEST(KnownApplications, IdsWithANumberBehindThemAreKnown)
{
    EXPECT_EQ(knownBundleIdentifier("Steam_App_570"), "com.valvesoftware.steam.app.570");
    EXPECT_EQ(knownBundleIdentifier("Minecraft* 1.20.1"), "com.mojang.minecraft");
    EXPECT_EQ(knownBundleIdentifier("gimp-2.99"), "com.adobe.Photoshop.gimp");
    EXPECT_EQ(knownBundleIdentifier("minecraft-launcher"), "com.mojang.minecraft");
    EXPECT_EQ(knownBundleIdentifier("minecraftish"), "");
}

TEST(KnownApplications, TwoOfAKindStayTwo)
{
    EXPECT_NE(knownBundleIdentifier("xterm"), knownBundleIdentifier("konsole"));
    EXPECT_NE(knownBundleIdentifier("thunar"), knownBundleIdentifier("org.gnome.nautilus"));
}

} // namespace
} // namespace quillbrook
