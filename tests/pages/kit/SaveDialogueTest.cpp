#include "pages/kit/SaveDialogue.h"
#include "platform/virtual/VirtualUserDefaults.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QWidget>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

class SaveDialogueTest : public testing::Test {
protected:
    SaveDialogueTest() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    /// The dialogue that offers `bytes`.
    QFileDialog& offered(const QByteArray& bytes = "text")
    {
        offerToSave(&window,
            {.title = "存储",
                .mimeType = "text/csv",
                .suffix = "csv",
                .name = "day.csv",
                .bytes = bytes},
            defaults);
        return *window.findChildren<QFileDialog*>().last();
    }

    void choose(const fs::path& path, const QByteArray& bytes = "text")
    {
        emit offered(bytes).fileSelected(QString::fromStdString(path.string()));
    }

    static std::string contentOf(const fs::path& path)
    {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    const TemporaryDirectory directory{};
    VirtualUserDefaults defaults{};
    QWidget window{};
};

TEST_F(SaveDialogueTest, PutsTheFileInThePlaceOfAnOlderOne)
{
    const fs::path path = directory.path() / "day.csv";
    choose(path, "a much longer text");
    choose(path, QByteArray("a\0b", 3));
    EXPECT_EQ(contentOf(path), std::string("a\0b", 3));
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 1);
}

TEST_F(SaveDialogueTest, DropsAFailureInSilence)
{
    choose(directory.path() / "none" / "day.csv");
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

TEST_F(SaveDialogueTest, BeginsInTheFolderOfTheLastTime)
{
    choose(directory.path() / "day.csv");
    EXPECT_EQ(offered().directory().path().toStdString(), directory.path().string());
    EXPECT_EQ(
        offered().selectedFiles().value(0).toStdString(), (directory.path() / "day.csv").string());
}

TEST_F(SaveDialogueTest, BeginsElsewhereWhenThatFolderIsGone)
{
    fs::create_directory(directory.path() / "gone");
    choose(directory.path() / "gone" / "day.csv");
    fs::remove_all(directory.path() / "gone");
    EXPECT_TRUE(offered().directory().exists());
}

TEST_F(SaveDialogueTest, MakesFoldersWhereTheProcessIsFreeTo)
{
    EXPECT_FALSE(offered().testOption(QFileDialog::ReadOnly));
}

} // namespace
} // namespace quillbrook
