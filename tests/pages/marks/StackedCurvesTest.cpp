#include "pages/marks/StackedCurves.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace quillbrook {
namespace {

using testing::ElementsAre;

constexpr double kRounding = 1e-9;

using Thicknesses = std::vector<std::vector<double>>;

double yAt(const Curve& curve, double t)
{
    const double u = 1 - t;
    return u * u * u * curve.from.y + 3 * u * u * t * curve.step.control1.y
        + 3 * u * t * t * curve.step.control2.y + t * t * t * curve.step.to.y;
}

/// Areas with many gaps, of which most places are filled to the top.
Thicknesses randomShares(std::mt19937& random, std::size_t areas, std::size_t places, double most)
{
    std::uniform_real_distribution<double> chance(0, 1);
    Thicknesses thicknesses(areas, std::vector<double>(places, 0));
    for (std::size_t place = 0; place < places; ++place) {
        double sum = 0;
        for (auto& area : thicknesses) {
            const double size = chance(random);
            area[place] = size < 0.4 ? 0 : size < 0.6 ? 1e-6 : size;
            sum += area[place];
        }
        const double whole = chance(random) < 0.8 ? most : most * chance(random);
        for (auto& area : thicknesses) {
            area[place] = sum > 0 ? area[place] / sum * whole : 0;
        }
    }
    return thicknesses;
}

TEST(StackedCurves, TakeTheSplinesSlopesWhereNothingIsInTheWay)
{
    const Thicknesses areas{{40, 50, 60}, {20, 20, 20}};
    const StackedCurves curves = stackedCurves({0, 10, 20}, areas, 100);
    EXPECT_THAT(curves.heights[1], ElementsAre(40, 50, 60));
    EXPECT_THAT(curves.heights[2], ElementsAre(60, 70, 80));
    for (const std::size_t edge : {1U, 2U}) {
        for (const double slope : curves.slopes[edge]) {
            EXPECT_NEAR(slope, 1, kRounding);
        }
    }
}

TEST(StackedCurves, AreHeldBackWhereAnAreaIsThin)
{
    // The spline would go through the middle at -0.688, and so below the base line.
    const Thicknesses areas{{90, 3, 4}};
    const StackedCurves curves = stackedCurves({0, 30, 60}, areas, 100);
    EXPECT_NEAR(curves.slopes[1][1], -0.3, kRounding); // 3 at the place, 0 a third of 30 later
    EXPECT_EQ(stackedCurves({0, 30, 60}, Thicknesses{{90, 0, 1}}, 100).slopes[1][1], 0);
}

TEST(StackedCurves, RunLevelAlongAFullTop)
{
    const Thicknesses areas{{10, 70, 30}, {90, 30, 70}};
    const StackedCurves curves = stackedCurves({0, 10, 20}, areas, 100);
    EXPECT_THAT(curves.heights[2], ElementsAre(100, 100, 100));
    EXPECT_THAT(curves.slopes[2], ElementsAre(0, 0, 0));
}

TEST(StackedCurves, ShrinkAPlaceThatIsTooThick)
{
    const StackedCurves curves = stackedCurves({0, 10}, Thicknesses{{150, 10}, {50, 10}}, 100);
    EXPECT_THAT(curves.heights[1], ElementsAre(75, 10));
    EXPECT_THAT(curves.heights[2], ElementsAre(100, 20));
}

TEST(StackedCurves, OfNothingAreTheBaseLine)
{
    EXPECT_THAT(stackedCurves({0, 10}, {}, 100).heights, ElementsAre(ElementsAre(0, 0)));
    EXPECT_THAT(stackedCurves({}, Thicknesses{{}}, 100).heights.size(), 2U);
}

TEST(StackedCurves, NeverCross)
{
    std::mt19937 random(7);
    for (int round = 0; round < 400; ++round) {
        const std::size_t places = 2 + random() % 14;
        std::vector<double> x{0};
        while (x.size() < places) {
            x.push_back(x.back() + 5 * static_cast<double>(1 + random() % 9));
        }
        const Thicknesses areas = randomShares(random, 1 + random() % 13, places, 240);
        const StackedCurves curves = stackedCurves(x, areas, 240);
        for (std::size_t place = 0; place + 1 < places; ++place) {
            for (double t = 0; t <= 1; t += 1.0 / 64) {
                double below = 0;
                for (std::size_t edge = 0; edge < curves.heights.size(); ++edge) {
                    const double height = -yAt(curveOf(curves, edge, place, 0), t);
                    ASSERT_GE(height, below - kRounding);
                    ASSERT_LE(height, 240 + kRounding);
                    below = height;
                }
            }
        }
    }
}

TEST(StackedCurves, LeaveNothingBetweenTwoPlacesWithoutThickness)
{
    std::mt19937 random(11);
    int empty = 0;
    for (int round = 0; round < 100; ++round) {
        const Thicknesses areas = randomShares(random, 6, 15, 240);
        std::vector<double> x;
        for (int place = 0; place < 15; ++place) {
            x.push_back(20.0 * place);
        }
        const StackedCurves curves = stackedCurves(x, areas, 240);
        for (std::size_t area = 0; area < 6; ++area) {
            for (std::size_t place = 0; place + 1 < 15; ++place) {
                if (areas[area][place] == 0 && areas[area][place + 1] == 0) {
                    ++empty;
                    ASSERT_EQ(
                        curveOf(curves, area, place, 240), curveOf(curves, area + 1, place, 240));
                }
            }
        }
    }
    EXPECT_GT(empty, 100);
}

TEST(StackedCurves, GoSmoothlyThroughTheirPoints)
{
    std::mt19937 random(13);
    const Thicknesses areas = randomShares(random, 5, 8, 100);
    const StackedCurves curves = stackedCurves({0, 9, 20, 30, 44, 50, 61, 70}, areas, 100);
    for (std::size_t edge = 0; edge < 6; ++edge) {
        for (std::size_t place = 1; place < 7; ++place) {
            const Curve before = curveOf(curves, edge, place - 1, 0);
            const Curve after = curveOf(curves, edge, place, 0);
            EXPECT_EQ(before.step.to, after.from);
            const double slopeBefore = (before.step.to.y - before.step.control2.y)
                / (before.step.to.x - before.step.control2.x);
            const double slopeAfter
                = (after.step.control1.y - after.from.y) / (after.step.control1.x - after.from.x);
            EXPECT_NEAR(slopeBefore, slopeAfter, kRounding);
        }
    }
}

} // namespace
} // namespace quillbrook
