// Which of the sizes in which a drawing is there suits a screen.
#pragma once

namespace platform {

// The drawings for higher resolutions are resources a hundred apart: 96, 120, 144 and 192 dots an inch. Between two of them
// the smaller one fits the room that the dialog leaves.
constexpr int kDrawingStep = 100;

constexpr int DrawingSteps(int dotsPerInch) {
  if (dotsPerInch >= 192) return 3;
  if (dotsPerInch >= 144) return 2;
  return dotsPerInch >= 120 ? 1 : 0;
}

}  // namespace platform
