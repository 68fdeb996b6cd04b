// The enumeration values that the logic exchanges with the host, by their
// published names.
#pragma once

namespace nivarel::office {

constexpr int msoTrue = -1, msoFalse = 0;
constexpr int msoShapeMixed = -2;

// Shape.Type
constexpr int msoAutoShape = 1, msoCallout = 2, msoFreeform = 5, msoGroup = 6, msoLine = 9,
              msoPicture = 13, msoTextBox = 17;

// A few AutoShapeType ids the layer itself names.
constexpr int msoShapeRectangle = 1, msoShapeFlowchartProcess = 61,
              msoShapeFlowchartAlternateProcess = 62, msoShapeFlowchartDecision = 63,
              msoShapeFlowchartData = 64, msoShapeFlowchartTerminator = 69,
              msoShapeFlowchartConnector = 73, msoShapeFlowchartOffpageConnector = 74;

// Connector types.
constexpr int msoConnectorStraight = 1, msoConnectorElbow = 2, msoConnectorCurve = 3;

// Z-order commands.
constexpr int msoBringToFront = 0, msoSendToBack = 1, msoBringForward = 2, msoSendBackward = 3;

// Text alignment.
constexpr int xlLeft = -4131, xlCenter = -4108, xlRight = -4152, xlTop = -4160, xlBottom = -4107,
              xlGeneral = 1, xlJustify = -4130;

// Placement.
constexpr int xlMoveAndSize = 1, xlMove = 2, xlFreeFloating = 3;

// Text orientation of text boxes.
constexpr int msoTextOrientationHorizontal = 1, msoTextOrientationUpward = 2,
              msoTextOrientationDownward = 3;

// Auto size.
constexpr int msoAutoSizeNone = 0, msoAutoSizeShapeToFitText = 1;
// Where the text block sits across the shape: spread over its width
// (the paragraphs align), centred, or from the left edge.
constexpr int msoAnchorNone = 1, msoAnchorCenter = 2, msoAnchorLeft = 3;

// Lines.
constexpr int msoLineSolid = 1, msoLineSquareDot = 2, msoLineRoundDot = 3, msoLineDash = 4,
              msoLineDashDot = 5, msoLineDashDotDot = 6, msoLineLongDash = 7, msoLineLongDashDot = 8;
constexpr int msoLineSingle = 1, msoLineThinThin = 2, msoLineThinThick = 3, msoLineThickThin = 4,
              msoLineThickBetweenThin = 5;
constexpr int msoArrowheadNone = 1, msoArrowheadTriangle = 2, msoArrowheadOpen = 3,
              msoArrowheadStealth = 4, msoArrowheadDiamond = 5, msoArrowheadOval = 6;
constexpr int msoArrowheadShort = 1, msoArrowheadLengthMedium = 2, msoArrowheadLong = 3;
constexpr int msoArrowheadNarrow = 1, msoArrowheadWidthMedium = 2, msoArrowheadWide = 3;

// Fill none.
constexpr int xlNone = -4142;

// Reading order that follows the text.
constexpr int xlContext = -5002;

// Gradient styles.
constexpr int msoGradientHorizontal = 1, msoGradientVertical = 2;

// Template save formats.
constexpr int xlTemplate = 17, xlOpenXMLTemplate = 54;

}  // namespace nivarel::office
