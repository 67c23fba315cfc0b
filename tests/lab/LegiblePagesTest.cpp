#include "report/Periods.h"
#include "support/LabRun.h"
#include "support/StoreReader.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRectF>

#include <sstream>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

constexpr const char* kNow = "1767282600"; // 23:50 in UTC+8, so that the day has all its hours

/// In each hour of the day, and of days before it, something of every kind, with names and figures
/// that no application should have.
constexpr const char* kExtremes = R"(
CREATE TEMP TABLE names AS SELECT column1 AS name, column2 AS count FROM (VALUES
  (printf('%.200c', 'A'), 98765432), ('Forty letters of an application''s name.', 1),
  (replace(printf('%.40c', 'n'), 'n', '应用名称'), 12345), ('תוכנית עורכת', 0),
  ('برنامج لتسجيل الوقت الطويل', 99999999999), ('👩‍👩‍👧‍👦🏳️‍🌈 家庭应用', 50), ('a	b
c', 1000), ('', 7), ('<b>bold</b>', 123456), ('x', 9999999), ('y', 5), ('z', 60));
CREATE TEMP TABLE hours AS WITH RECURSIVE hours(h) AS
  (SELECT 0 UNION ALL SELECT h + 1 FROM hours WHERE h < 71)
  SELECT 1767196800 + (h - 48) * 3600 AS at FROM hours;
INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, close_type)
  SELECT name, name, at + 1, at + 300, count % 4000, count % 6 FROM hours, names;
INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count)
  SELECT at + 30, name, CASE count % 3 WHEN 0 THEN 'english' WHEN 1 THEN 'shuangpin'
    ELSE 'other' END, count FROM hours, names;
INSERT INTO alerts (timestamp, alert_type, severity, message)
  SELECT at + count % 3000, substr(name, 1, 50), 'warning', '' FROM hours, names;
INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type)
  SELECT at, at + 60, count * 1e6, count % 6 FROM hours, names;
)";

struct Element {
    std::string role{};
    std::string name{};
    QRectF place{};
};

std::vector<Element> elementsOf(const std::string& lines)
{
    std::vector<Element> elements;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        const QJsonObject object
            = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
        const QJsonArray rect = object["rect"].toArray();
        elements.push_back(
            {object["role"].toString().toStdString(), object["name"].toString().toStdString(),
                QRectF(rect[0].toDouble(), rect[1].toDouble(), rect[2].toDouble(),
                    rect[3].toDouble())});
    }
    return elements;
}

/// What is written, or pressed, and has a place of its own.
bool isWritten(const Element& element)
{
    return element.role == "text" || element.role == "button" || element.role == "picker"
        || element.role == "image";
}

/// Whether two places share more than the rounding of one point.
bool isOverlap(const QRectF& one, const QRectF& other)
{
    const QRectF shared = one & other;
    return shared.width() > 1 && shared.height() > 1.5;
}

class LegiblePagesTest : public testing::TestWithParam<const char*> {
protected:
    LegiblePagesTest()
    {
        lab.run("seed --data " + lab.path("data") + " --days 2 --now " + kNow);
        StoreReader(lab.path("data/monitor.db")).exec(kExtremes);
    }

    std::vector<Element> page(std::string_view tab)
    {
        const LabResult result
            = lab.run("page --full --data " + lab.path("data") + " --now " + kNow + " --size "
                + GetParam() + " --tab " + std::string(tab) + " --text " + lab.path("text"));
        EXPECT_EQ(result.status, 0) << result.errors;
        return elementsOf(lab.read("text"));
    }

    LabRun lab{};
};

TEST_P(LegiblePagesTest, CutNothingAndWriteNothingOverAnything)
{
    for (const auto& tab : allCases<NavTab>) {
        const std::vector<Element> elements = page(tab.rawValue);
        ASSERT_GT(elements.size(), 15U) << tab.rawValue;
        const QRectF window = elements.front().place;
        for (std::size_t i = 1; i < elements.size(); ++i) {
            const Element& one = elements[i];
            if (!isWritten(one)) {
                continue;
            }
            EXPECT_TRUE(one.place.isEmpty() || window.contains(one.place))
                << tab.rawValue << ": " << one.name;
            for (std::size_t j = 1; j < elements.size(); ++j) {
                const Element& other = elements[j];
                // The shares stand in their sectors.
                const bool mayNotTouch = isWritten(other)
                    ? j < i
                    : other.role == "mark" && tab.value != NavTab::keylog;
                EXPECT_FALSE(mayNotTouch && isOverlap(one.place, other.place))
                    << tab.rawValue << ": " << one.name << " / " << other.name;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AtEverySize, LegiblePagesTest, testing::Values("820x560", "1600x1000"));

} // namespace
} // namespace quillbrook
