// Bodies in the level, as a view sees them: near ones hide far ones.
#pragma once

#include <vector>

#include "engine/scene/Camera.h"
#include "engine/window/Canvas.h"

namespace korvel::window {

/// What turns colors with the distance.
struct Fog {
  double strength = 0;  ///< 0 to 1
  double begin = 0, end = 0;
  Rgb color{};

  /// How much of it is before a depth, from 0 to 256.
  int CoverAt(double depth) const;
};

struct Light {
  double ambient = 0;  ///< added to each body's own, 0 to 1
  Triple sun{};        ///< the direction to it
  Rgb color{255, 255, 255};
};

/// One thing in the level. Shares are from 0 to 1.
struct Solid {
  Triple at, angles, size;
  Rgb color;
  double ambient, albedo, alpha;
  Sheet sheet;  ///< without pixels it is a box
};

class Rasteriser {
 public:
  explicit Rasteriser(Canvas& canvas) : canvas_(canvas) {}

  /// Begins the picture of a view; all depths are free again.
  void Begin(const Camera& camera, double roll, const Fog& fog, const Light& light);
  /// Takes a body. Those that cover all are drawn at once, the others at the end, from far to near.
  void Add(const Solid& solid);
  void Finish();

  /// The edges of a box and a small cross at a point, above all.
  void DrawEdges(const Triple& at, const Triple& size, const Rgb& color);
  void DrawCross(const Triple& at, const Rgb& color);

  const Clip& clip() const { return clip_; }

 private:
  struct Corner {
    double x, y, inverse;  ///< pixels, and 1 / depth
  };

  void Draw(const Solid& solid);
  void DrawBox(const Solid& solid);
  void DrawPicture(const Solid& solid);
  void FillFace(const Corner* corners, int count, const Rgb& color, int cover);
  void DrawLevelLine(Triple from, Triple to, const Rgb& color);
  void Put(int x, int y, float inverse, uint32_t color, int cover);

  Canvas& canvas_;
  Camera camera_{{0, 0, 0}, {0, 0, 0}, 60, {0, 0, 0, 0}, 0, 0};
  double roll_ = 0;
  Fog fog_;
  Light light_;
  Clip clip_;
  std::vector<float> depth_;  ///< 1 / depth of what is seen at each pixel of the window, 0 for nothing
  struct Later {
    double depth;
    Solid solid;
  };
  std::vector<Later> later_;
};

}  // namespace korvel::window
