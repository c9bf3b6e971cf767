/// \file
/// One view of a screen on the page of a plot.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Plot/Views/PlotEyeView.h>
#include <QuarnKit/Plot/Views/PlotViews.h>

#include "PlotLabels.h"
#include "SvgWriter.h"

namespace quarn {

/// A corner of the unit square of UV on a surface.
struct SceneCorner {
    int u = 0;
    int v = 0;
    Point<double, 3> position;
};

/// The objects in the views of a plot, in sizes of the surface.
struct PlotScene {
    using Position = Point<double, 3>;

    /// Returns a view of the surface.
    /// \param eye an eye point that is drawn in the view
    std::function<SceneView(const Camera&, const std::optional<Position>& eye)> view;
    std::vector<SceneCorner> corners = {};  ///< Corners with a label.
    std::optional<Position> eye = {};       ///< Nothing if it is too far away.
    std::optional<Position> heading = {};   ///< Unit vector.
    std::optional<EyeView> eyeView = {};    ///< Nothing if the scene is not drawable.
};

/// The drawn part of a view's plane.
class Frame {
public:
    void include(const ViewPoint& point) { bounds.include(point); }
    [[nodiscard]] ViewPoint middle() const { return (bounds.min + bounds.max) * 0.5; }
    [[nodiscard]] const ViewPoint& min() const { return bounds.min; }
    [[nodiscard]] const ViewPoint& max() const { return bounds.max; }
    /// Returns the pixels for a length of 1 with which the frame fits into \p box.
    [[nodiscard]] double scaleInto(const Box& box) const;

private:
    Bounds<2> bounds;
};

/// Side of the drawing on which the dimension line of its width is drawn.
enum class WidthLine { Below, Above };

/// Texts of the dimension lines of a view; an empty text has no line.
struct Dimensions {
    std::string width = {};
    std::string height = {};
    WidthLine widthLine = WidthLine::Below;
};

/// Whether a panel has space for dimension lines.
enum class DimensionSpace { None, Reserved };

/// Whether a panel shows the eye point and the heading.
enum class EyeMark { None, Drawn };

/// A view of a scene. The scene has to outlive the panel.
class PlotPanel {
public:
    PlotPanel(const PlotScene& shownScene, const Camera& viewCamera, EyeMark eyeMark = EyeMark::Drawn);

    /// Returns the part of the panel's box for the drawing itself, without margins for labels and
    /// dimension lines.
    [[nodiscard]] static Box drawingBox(const Box& box, DimensionSpace space);
    [[nodiscard]] const Frame& frame() const { return wholeFrame; }

    /// Draws the view into a box of the page.
    /// \param scale pixels for a length of 1
    /// \param dimensions nothing for a view without dimension lines
    void draw(SvgWriter& svg, const Box& box, double scale,
              const std::optional<Dimensions>& dimensions) const;

private:
    class Drawing;

    const PlotScene& scene;
    Camera camera;
    std::optional<Point<double, 3>> eye;  // nothing if it is not drawn
    SceneView view;
    Frame surfaceFrame;
    Frame wholeFrame;  // with the eye point and the heading
};

/// Draws the title of a panel into its upper left corner.
void drawPanelTitle(SvgWriter& svg, const Box& box, const std::string& title);

/// Draws what a panel leaves out into its upper right corner; nothing for an empty note.
void drawPanelNote(SvgWriter& svg, const Box& box, const std::string& note);

/// Draws an arrow with its head at \p to and a light border, which makes it legible on any color;
/// nothing if it would be shorter than its head.
void drawArrow(SvgWriter& svg, const std::string& styleClass, const PagePoint& from, const PagePoint& to);

}  // namespace quarn
