// SPDX-License-Identifier: MIT
#ifndef ZEVA_TESTS_RECORDING_DRAW_H
#define ZEVA_TESTS_RECORDING_DRAW_H

#include "db/zvdbentity.h"

#include <gtest/gtest.h>

#include <string>

/// Writes down what an entity draws.
class RecordingDraw : public ZvGiWorldDraw
{
public:
    struct Path
    {
        std::vector<ZvGePoint3d> points;
        std::vector<double> startWidths; // empty for a thin one
        std::vector<double> endWidths;
        bool closed = false;
        ZvCmColor color;
    };
    struct Arc
    {
        ZvGePoint3d center;
        double radius;
        ZvGeVector3d normal;
        double start;
        double sweep;
    };
    struct Ellipse
    {
        ZvGePoint3d center;
        ZvGeVector3d major;
        ZvGeVector3d minor;
        double start;
        double sweep;
    };
    struct Ray
    {
        ZvGePoint3d base;
        ZvGeVector3d direction;
        bool both;
    };
    struct Image
    {
        ZvString path;
        ZvGePoint3d origin;
        ZvGeVector3d u;
        ZvGeVector3d v;
        std::vector<ZvGePoint2d> clip;
    };
    struct Block
    {
        ZvDbObjectId id;
        ZvGeMatrix3d matrix;
    };

    explicit RecordingDraw(const ZvDbEntity &entity, double deviation = 0.001) : m_deviation(deviation) { entity.worldDraw(*this); }

    std::vector<Path> paths;
    std::vector<Arc> arcs;
    std::vector<Ellipse> ellipses;
    std::vector<ZvGePoint3d> points;
    std::vector<Ray> rays;
    std::vector<ZvGiFill> fills;
    std::vector<ZvGiText> texts;
    std::vector<ZvGiMText> mtexts;
    std::vector<Image> images;
    std::vector<Block> blocks;
    std::vector<ZvDbObjectId> viewports;

    std::size_t count() const
    {
        return paths.size() + arcs.size() + ellipses.size() + points.size() + rays.size() + fills.size() + texts.size()
            + mtexts.size() + images.size() + blocks.size() + viewports.size();
    }

    ZvGiTraits &traits() override { return m_traits; }
    double deviation() const override { return m_deviation; }
    void polyline(const ZvGePoint3d *p, int count, bool closed) override
    {
        paths.push_back({{p, p + count}, {}, {}, closed, m_traits.color});
    }
    void widePolyline(const ZvGePoint3d *p, const double *startWidths, const double *endWidths, int count, bool closed,
                      const ZvGeVector3d &) override
    {
        const int segments = closed ? count : count - 1;
        paths.push_back({{p, p + count}, {startWidths, startWidths + segments}, {endWidths, endWidths + segments}, closed, m_traits.color});
    }
    void arc(const ZvGePoint3d &center, double radius, const ZvGeVector3d &normal, double start, double sweep) override
    {
        arcs.push_back({center, radius, normal, start, sweep});
    }
    void ellipse(const ZvGePoint3d &center, const ZvGeVector3d &major, const ZvGeVector3d &minor, double start, double sweep) override
    {
        ellipses.push_back({center, major, minor, start, sweep});
    }
    void point(const ZvGePoint3d &position) override { points.push_back(position); }
    void ray(const ZvGePoint3d &base, const ZvGeVector3d &direction, bool both) override { rays.push_back({base, direction, both}); }
    void fill(const ZvGiFill &fill) override { fills.push_back(fill); }
    void text(const ZvGiText &text) override { texts.push_back(text); }
    void mtext(const ZvGiMText &text) override { mtexts.push_back(text); }
    void image(const ZvString &path, const ZvGePoint3d &origin, const ZvGeVector3d &u, const ZvGeVector3d &v,
               const std::vector<ZvGePoint2d> &clip) override
    {
        images.push_back({path, origin, u, v, clip});
    }
    void block(ZvDbObjectId id, const ZvGeMatrix3d &matrix) override { blocks.push_back({id, matrix}); }
    void viewport(ZvDbObjectId id) override { viewports.push_back(id); }

private:
    ZvGiTraits m_traits;
    double m_deviation;
};

inline void expectPoint(const ZvGePoint3d &p, double x, double y, double z = 0.0, double tolerance = 1e-9)
{
    EXPECT_NEAR(p.x, x, tolerance);
    EXPECT_NEAR(p.y, y, tolerance);
    EXPECT_NEAR(p.z, z, tolerance);
}

inline void expectBox(const ZvDbEntity &entity, double x0, double y0, double x1, double y1, double tolerance = 1e-9)
{
    ZvGeExtents3d box;
    ASSERT_EQ(entity.getGeomExtents(box), Zv::eOk);
    EXPECT_NEAR(box.minimum.x, x0, tolerance);
    EXPECT_NEAR(box.minimum.y, y0, tolerance);
    EXPECT_NEAR(box.maximum.x, x1, tolerance);
    EXPECT_NEAR(box.maximum.y, y1, tolerance);
}

/// Everything asserted during its life; a test that expects none checks at its end.
class AssertWatch
{
public:
    AssertWatch() : m_before(zvSetAssertHandler([](const char *text, const char *, int) { texts().push_back(text); })) { texts().clear(); }
    ~AssertWatch() { zvSetAssertHandler(m_before); }
    static std::vector<std::string> &texts()
    {
        static std::vector<std::string> all;
        return all;
    }

private:
    ZvAssertHandler m_before;
};

#endif
