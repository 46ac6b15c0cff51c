// SPDX-License-Identifier: MIT
#ifndef SLICEDPICTURE_H
#define SLICEDPICTURE_H

#include "viewcamera.h"

#include <QImage>
#include <QRegion>

#include <functional>

class QPainter;

/// A picture of a view that is drawn in slices between the events, so that a large drawing never holds up the window.
///
/// A shift keeps what is still seen and draws the exposed strips only. After any other change of the camera the old
/// picture is shown, scaled, until the new one is ready.
class SlicedPicture
{
public:
    /// Draws from entity number \a first on for \a budget milliseconds into device pixels, clipped to what is wanted;
    /// the number to go on with, or -1 at the end.
    using Source
        = std::function<int(QPainter &painter, const ViewCamera &camera, double pixelRatio, int first, int budget)>;
    /// Paints what lies under the drawing, in logical pixels.
    using Ground = std::function<void(QPainter &painter, const ViewCamera &camera)>;

    SlicedPicture(Source source, Ground ground) : m_source(std::move(source)), m_ground(std::move(ground)) { }

    /// What the picture has to show from now on.
    void setCamera(const ViewCamera &camera, double pixelRatio);
    /// The content has changed: the old picture stays in sight until the new one is ready.
    void invalidate();
    /// Shows nothing until something is drawn again.
    void clear();
    bool isComplete() const;
    /// Draws on for \a budget milliseconds; true when what paint() shows has changed.
    bool drawSlice(int budget);
    /// Shows the picture at hand in logical pixels, as \a camera sees it.
    void paint(QPainter &painter, const ViewCamera &camera) const;

private:
    struct Sheet
    {
        QImage image;
        ViewCamera camera;
        QRegion missing; ///< In device pixels.
        int next = 0; ///< Entity to go on with.
    };
    Sheet makeSheet(const ViewCamera &camera) const;
    bool shift(const ViewCamera &camera);
    void paintGround(Sheet &sheet, const QRegion &region) const;
    void drawSheet(Sheet &sheet, int budget) const;

    Source m_source;
    Ground m_ground;
    Sheet m_shown;
    Sheet m_coming; ///< Takes the place of the one shown when it is ready; without an image while there is none.
    double m_pixelRatio = 1.0;
};

#endif
