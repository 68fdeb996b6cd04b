#include "AutoShapeTypes.h"

#include <cstddef>

namespace nivarel::office {
namespace {

// Connection sites in Excel's numbering, as fractions of the bounding box, for
// the types whose office shape does not carry them as glue points 4 and up.
// Values outside 0..1 are callout tips and arrow heads that leave the box.
// Positions follow the office shape's default geometry.

// 1 Rectangle.
const SitePoint kSites1[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 5 Rounded Rectangle.
const SitePoint kSites5[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 6 Octagon: the office glue points sit at a quarter of the width when the
// shape is wider than tall.
const SitePoint kSites6[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 11 Cross: the office glue points sit at a quarter of the width when the
// shape is wider than tall.
const SitePoint kSites11[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 15 Bevel.
const SitePoint kSites15[] = {{0.0, 0.5}, {0.125, 0.5}, {0.5, 1.0}, {0.5, 0.875}, {1.0, 0.5}, {0.875, 0.5}, {0.5, 0.0}, {0.5, 0.125}};

// 20 Block Arc.
const SitePoint kSites20[] = {{0.5, 0.0}, {0.125, 0.5}, {0.5, 0.25}, {0.875, 0.5}};

// 25 Arc: the office arc is the upper right quarter of the inscribed
// ellipse, not a quarter of an ellipse centred on the lower left corner.
const SitePoint kSites25[] = {{0.5, 0.0}, {1.0, 0.5}, {0.5, 0.5}};

// 26 Double Bracket: the office glue points sit at a quarter of the width
// when the shape is wider than tall.
const SitePoint kSites26[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 27 Double Brace: the office glue points sit at a quarter of the width when
// the shape is wider than tall.
const SitePoint kSites27[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 28 Plaque: the office glue points sit at a quarter of the width when the
// shape is wider than tall.
const SitePoint kSites28[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 32 Right Brace: the office glue points are in bracket order (top, bottom,
// point).
const SitePoint kSites32[] = {{0.0, 0.0}, {1.0, 0.5}, {0.0, 1.0}};

// 33 Right Arrow.
const SitePoint kSites33[] = {{0.75, 0.0}, {0.0, 0.5}, {0.75, 1.0}, {1.0, 0.5}};

// 34 Left Arrow.
const SitePoint kSites34[] = {{0.25, 0.0}, {0.0, 0.5}, {0.25, 1.0}, {1.0, 0.5}};

// 35 Up Arrow.
const SitePoint kSites35[] = {{0.5, 0.0}, {0.0, 0.25}, {0.5, 1.0}, {1.0, 0.25}};

// 36 Down Arrow.
const SitePoint kSites36[] = {{0.5, 0.0}, {0.0, 0.75}, {0.5, 1.0}, {1.0, 0.75}};

// 37 Left-Right Arrow.
const SitePoint kSites37[] = {{0.8, 0.0}, {0.5, 0.25}, {0.2, 0.0}, {0.0, 0.5}, {0.2, 1.0}, {0.5, 0.75}, {0.8, 1.0}, {1.0, 0.5}};

// 38 Up-Down Arrow.
const SitePoint kSites38[] = {{0.5, 0.0}, {0.0, 0.2}, {0.25, 0.5}, {0.0, 0.8}, {0.5, 1.0}, {1.0, 0.8}, {0.75, 0.5}, {1.0, 0.2}};

// 39 Quad Arrow.
const SitePoint kSites39[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 40 Left-Right-Up Arrow: the office geometry has its side arrows at mid
// height and ends at 0.70 of the height.
const SitePoint kSites40[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 0.6991}, {1.0, 0.5}};

// 41 Bent Arrow.
const SitePoint kSites41[] = {{0.7003, 0.0}, {0.7003, 0.5629}, {0.1499, 1.0}, {1.0, 0.2814}};

// 42 U-Turn Arrow.
const SitePoint kSites42[] = {{0.4282, 0.0}, {0.1414, 1.0}, {0.4502, 0.3847}, {0.7251, 0.6613}, {1.0, 0.3847}};

// 43 Left-Up Arrow.
const SitePoint kSites43[] = {{0.7143, 0.0}, {0.4286, 0.2857}, {0.2857, 0.4286}, {0.0, 0.7143}, {0.2857, 1.0}, {0.5714, 0.8571}, {0.8571, 0.5714}, {1.0, 0.2857}};

// 44 BentUpArrow.
const SitePoint kSites44[] = {{0.7143, 0.0}, {0.4286, 0.3333}, {0.0, 0.8333}, {0.4286, 1.0}, {0.8571, 0.6944}, {1.0, 0.3333}};

// 49 Striped Right Arow.
const SitePoint kSites49[] = {{0.75, 0.0}, {0.0, 0.5}, {0.75, 1.0}, {1.0, 0.5}};

// 50 Notched Right Arow.
const SitePoint kSites50[] = {{0.75, 0.0}, {0.125, 0.5}, {0.75, 1.0}, {1.0, 0.5}};

// 51 Pentagon.
const SitePoint kSites51[] = {{0.375, 0.0}, {0.0, 0.5}, {0.375, 1.0}, {1.0, 0.5}};

// 52 Chevron.
const SitePoint kSites52[] = {{0.375, 0.0}, {0.25, 0.5}, {0.375, 1.0}, {1.0, 0.5}};

// 53 Right Arrow Callout.
const SitePoint kSites53[] = {{0.3333, 0.0}, {0.0, 0.5}, {0.3333, 1.0}, {1.0, 0.5}};

// 54 Left Arrow Callout.
const SitePoint kSites54[] = {{0.6667, 0.0}, {0.0, 0.5}, {0.6667, 1.0}, {1.0, 0.5}};

// 55 Up Arrow Callout.
const SitePoint kSites55[] = {{0.5, 0.0}, {0.0, 0.6667}, {0.5, 1.0}, {1.0, 0.6667}};

// 56 Down Arrow Callout.
const SitePoint kSites56[] = {{0.5, 0.0}, {0.0, 0.3333}, {0.5, 1.0}, {1.0, 0.3333}};

// 57 Left-Right Arrow Callout.
const SitePoint kSites57[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 58 Up-Down Arrow Callout.
const SitePoint kSites58[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 59 Quad Arrow Callout.
const SitePoint kSites59[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 60 Circular Arrow.
const SitePoint kSites60[] = {{0.5, 0.0}, {0.125, 0.5}, {0.5, 0.25}, {1.125, 0.5}, {0.875, 0.75}, {0.625, 0.5}};

// 65 Predefined Process.
const SitePoint kSites65[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 66 Internal Storage.
const SitePoint kSites66[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 80 Sort.
const SitePoint kSites80[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 91 4-point Star.
const SitePoint kSites91[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 92 5-point Star.
const SitePoint kSites92[] = {{0.5, 0.0}, {0.0, 0.3824}, {0.1944, 1.0}, {0.8056, 1.0}, {1.0, 0.3824}};

// 93 8-point Star.
const SitePoint kSites93[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 94 16-point Star.
const SitePoint kSites94[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 95 24-point Star.
const SitePoint kSites95[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 96 32-point Star.
const SitePoint kSites96[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}};

// 97 Up Ribbon.
const SitePoint kSites97[] = {{0.5, 0.0}, {0.125, 0.5625}, {0.5, 0.875}, {0.875, 0.5625}};

// 99 Curved Up Ribbon.
const SitePoint kSites99[] = {{0.5, 0.0}, {0.125, 0.5681}, {0.5, 0.75}, {0.875, 0.5681}};

// 100 Curved Down Ribbon.
const SitePoint kSites100[] = {{0.5, 0.25}, {0.125, 0.4319}, {0.5, 1.0}, {0.875, 0.4319}};

// 101 Vertical Scroll.
const SitePoint kSites101[] = {{0.5, 0.0}, {0.125, 0.5}, {0.5, 1.0}, {0.875, 0.5}};

// 102 Horizontal Scroll.
const SitePoint kSites102[] = {{0.5, 0.125}, {0.0, 0.5}, {0.5, 0.875}, {1.0, 0.5}};

// 106 Rounded Rectangular Callout.
const SitePoint kSites106[] = {{0.5, 0.0}, {0.0, 0.5}, {0.5, 1.0}, {1.0, 0.5}, {0.0625, 1.2}};

// 108 Cloud Callout.
const SitePoint kSites108[] = {{0.0031, 0.5}, {0.5, 0.9989}, {0.9992, 0.5}, {0.5, 0.0572}, {0.0625, 1.2}};

// 109 Line Callout1.
const SitePoint kSites109[] = {{-0.0833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 110 Line Callout2.
const SitePoint kSites110[] = {{-0.3833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 111 Line Callout3.
const SitePoint kSites111[] = {{-0.4667, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 112 Line Callout4.
const SitePoint kSites112[] = {{1.0833, 1.1296}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 113 Line Callout1 Accent Bar.
const SitePoint kSites113[] = {{-0.0833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 114 Line Callout2 Accent Bar.
const SitePoint kSites114[] = {{-0.3833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 115 Line Callout3 Accent Bar.
const SitePoint kSites115[] = {{-0.4667, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 116 Line Callout4 Accent Bar.
const SitePoint kSites116[] = {{1.0833, 1.1296}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 117 Line Callout1 No Border.
const SitePoint kSites117[] = {{-0.0833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 118 Line Callout2 No Border.
const SitePoint kSites118[] = {{-0.3833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 119 Line Callout3 No Border.
const SitePoint kSites119[] = {{-0.4667, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 120 Line Callout4 No Border.
const SitePoint kSites120[] = {{1.0833, 1.1296}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 121 Line Callout1 Border and Accent Bar.
const SitePoint kSites121[] = {{-0.0833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 122 Line Callout2 Border and Accent Bar.
const SitePoint kSites122[] = {{-0.3833, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 123 Line Callout3 Border and Accent Bar.
const SitePoint kSites123[] = {{-0.4667, 1.125}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 124 Line Callout4 Border and Accent Bar.
const SitePoint kSites124[] = {{1.0833, 1.1296}, {0.5, 0.0}, {0.5, 1.0}, {0.0, 0.5}, {1.0, 0.5}};

// 125 Action Button Custom.
const SitePoint kSites125[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 126 Action Button Home.
const SitePoint kSites126[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 127 Action Button Help.
const SitePoint kSites127[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 128 Action Button Information.
const SitePoint kSites128[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 129 Action Button Back or Previous.
const SitePoint kSites129[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 130 Action Button Forward or Next.
const SitePoint kSites130[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 131 Action Button Beginning.
const SitePoint kSites131[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 132 Action Button End.
const SitePoint kSites132[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 133 Action Button Return.
const SitePoint kSites133[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 134 Action Button Document.
const SitePoint kSites134[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 135 Action Button Sound.
const SitePoint kSites135[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 136 Action Button Movie.
const SitePoint kSites136[] = {{0.0, 0.5}, {0.0625, 0.5}, {0.5, 1.0}, {0.5, 0.9375}, {1.0, 0.5}, {0.9375, 0.5}, {0.5, 0.0}, {0.5, 0.0625}};

// 137 Balloon.
const SitePoint kSites137[] = {{0.5, 0.0}, {0.0, 0.4167}, {0.0833, 1.0}, {0.5, 0.8333}, {1.0, 0.4167}};

const AutoShapeTypeInfo kTypes[] = {
    {1, "Rectangle", "rectangle", "rect", 4, kSites1},
    {2, "Parallelogram", "parallelogram", "parallelogram", 6, nullptr},
    {3, "Trapezoid", "trapezoid", "", 4, nullptr},
    {4, "Diamond", "diamond", "diamond", 4, nullptr},
    {5, "Rounded Rectangle", "round-rectangle", "roundRect", 4, kSites5},
    {6, "Octagon", "octagon", "octagon", 4, kSites6},
    {7, "Isosceles Triangle", "isosceles-triangle", "triangle", 6, nullptr},
    {8, "Right Triangle", "right-triangle", "rtTriangle", 6, nullptr},
    {9, "Oval", "ellipse", "ellipse", 8, nullptr},
    {10, "Hexagon", "hexagon", "hexagon", 4, nullptr},
    {11, "Cross", "cross", "plus", 4, kSites11},
    {12, "Regular Pentagon", "pentagon", "pentagon", 6, nullptr},
    {13, "Can", "can", "can", 5, nullptr},
    {14, "Cube", "cube", "cube", 6, nullptr},
    {15, "Bevel", "quad-bevel", "bevel", 8, kSites15},
    {16, "Folded Corner", "paper", "foldedCorner", 4, nullptr},
    {17, "Smiley Face", "smiley", "smileyFace", 8, nullptr},
    {18, "Donut", "ring", "donut", 8, nullptr},
    {19, "No Symbol", "forbidden", "noSmoking", 8, nullptr},
    {20, "Block Arc", "block-arc", "blockArc", 4, kSites20},
    {21, "Heart", "heart", "", 4, nullptr},
    {22, "Lightning Bolt", "lightning", "lightningBolt", 7, nullptr},
    {23, "Sun", "sun", "sun", 4, nullptr},
    {24, "Moon", "moon", "", 4, nullptr},
    {25, "Arc", "mso-spt19", "", 3, kSites25},
    {26, "Double Bracket", "bracket-pair", "bracketPair", 4, kSites26},
    {27, "Double Brace", "brace-pair", "bracePair", 4, kSites27},
    {28, "Plaque", "mso-spt21", "", 4, kSites28},
    {29, "Left Bracket", "left-bracket", "", 3, nullptr},
    {30, "Right Bracket", "right-bracket", "", 3, nullptr},
    {31, "Left Brace", "left-brace", "", 3, nullptr},
    {32, "Right Brace", "right-brace", "", 3, kSites32},
    {33, "Right Arrow", "right-arrow", "rightArrow", 4, kSites33},
    {34, "Left Arrow", "left-arrow", "leftArrow", 4, kSites34},
    {35, "Up Arrow", "up-arrow", "upArrow", 4, kSites35},
    {36, "Down Arrow", "down-arrow", "downArrow", 4, kSites36},
    {37, "Left-Right Arrow", "left-right-arrow", "leftRightArrow", 8, kSites37},
    {38, "Up-Down Arrow", "up-down-arrow", "upDownArrow", 8, kSites38},
    {39, "Quad Arrow", "quad-arrow", "", 4, kSites39},
    {40, "Left-Right-Up Arrow", "mso-spt182", "", 4, kSites40},
    {41, "Bent Arrow", "mso-spt91", "", 4, kSites41},
    {42, "U-Turn Arrow", "mso-spt101", "uturnArrow", 5, kSites42},
    {43, "Left-Up Arrow", "mso-spt89", "", 8, kSites43},
    {44, "BentUpArrow", "mso-spt90", "", 6, kSites44},
    {45, "Curved Right Arow", "mso-spt102", "", 5, nullptr},
    {46, "Curved Left Arow", "mso-spt103", "", 5, nullptr},
    {47, "Curved Up Arow", "mso-spt104", "", 5, nullptr},
    {48, "Curved Down Arow", "mso-spt105", "", 5, nullptr},
    {49, "Striped Right Arow", "striped-right-arrow", "", 4, kSites49},
    {50, "Notched Right Arow", "notched-right-arrow", "", 4, kSites50},
    {51, "Pentagon", "pentagon-right", "", 4, kSites51},
    {52, "Chevron", "chevron", "", 4, kSites52},
    {53, "Right Arrow Callout", "right-arrow-callout", "rightArrowCallout", 4, kSites53},
    {54, "Left Arrow Callout", "left-arrow-callout", "leftArrowCallout", 4, kSites54},
    {55, "Up Arrow Callout", "up-arrow-callout", "upArrowCallout", 4, kSites55},
    {56, "Down Arrow Callout", "down-arrow-callout", "downArrowCallout", 4, kSites56},
    {57, "Left-Right Arrow Callout", "left-right-arrow-callout", "", 4, kSites57},
    {58, "Up-Down Arrow Callout", "up-down-arrow-callout", "", 4, kSites58},
    {59, "Quad Arrow Callout", "quad-arrow-callout", "", 4, kSites59},
    {60, "Circular Arrow", "circular-arrow", "", 6, kSites60},
    {61, "Process", "flowchart-process", "flowChartProcess", 4, nullptr},
    {62, "Alternate Process", "flowchart-alternate-process", "flowChartAlternateProcess", 4, nullptr},
    {63, "Decision", "flowchart-decision", "flowChartDecision", 4, nullptr},
    {64, "Data", "flowchart-data", "flowChartInputOutput", 6, nullptr},
    {65, "Predefined Process", "flowchart-predefined-process", "flowChartPredefinedProcess", 4, kSites65},
    {66, "Internal Storage", "flowchart-internal-storage", "flowChartInternalStorage", 4, kSites66},
    {67, "Document", "flowchart-document", "flowChartDocument", 4, nullptr},
    {68, "Multi-Document", "flowchart-multidocument", "flowChartMultidocument", 4, nullptr},
    {69, "Terminator", "flowchart-terminator", "flowChartTerminator", 4, nullptr},
    {70, "Preparation", "flowchart-preparation", "flowChartPreparation", 4, nullptr},
    {71, "Manual Input", "flowchart-manual-input", "flowChartManualInput", 4, nullptr},
    {72, "Manual Operation", "flowchart-manual-operation", "flowChartManualOperation", 4, nullptr},
    {73, "Connector", "flowchart-connector", "flowChartConnector", 8, nullptr},
    {74, "Off-Page Connector", "flowchart-off-page-connector", "flowChartOffpageConnector", 4, nullptr},
    {75, "Card", "flowchart-card", "flowChartPunchedCard", 4, nullptr},
    {76, "Punched Tape", "flowchart-punched-tape", "flowChartPunchedTape", 4, nullptr},
    {77, "Summing Junction", "flowchart-summing-junction", "flowChartSummingJunction", 8, nullptr},
    {78, "Or", "flowchart-or", "flowChartOr", 8, nullptr},
    {79, "Collate", "flowchart-collate", "flowChartCollate", 3, nullptr},
    {80, "Sort", "flowchart-sort", "flowChartSort", 4, kSites80},
    {81, "Extract", "flowchart-extract", "flowChartExtract", 4, nullptr},
    {82, "Merge", "flowchart-merge", "flowChartMerge", 4, nullptr},
    {83, "Stored Data", "flowchart-stored-data", "flowChartOnlineStorage", 4, nullptr},
    {84, "Delay", "flowchart-delay", "flowChartDelay", 4, nullptr},
    {85, "Sequential Access Storage", "flowchart-sequential-access", "flowChartMagneticTape", 4, nullptr},
    {86, "Magnetic Disk", "flowchart-magnetic-disk", "flowChartMagneticDisk", 5, nullptr},
    {87, "Direct Access Storage", "flowchart-direct-access-storage", "flowChartMagneticDrum", 5, nullptr},
    {88, "Display", "flowchart-display", "flowChartDisplay", 4, nullptr},
    {89, "Explosion1", "mso-spt71", "irregularSeal1", 4, nullptr},
    {90, "Explosion2", "bang", "irregularSeal2", 4, nullptr},
    {91, "4-point Star", "star4", "", 4, kSites91},
    {92, "5-point Star", "star5", "star5", 5, kSites92},
    {93, "8-point Star", "star8", "", 4, kSites93},
    {94, "16-point Star", "mso-spt59", "", 4, kSites94},
    {95, "24-point Star", "star24", "", 4, kSites95},
    {96, "32-point Star", "mso-spt60", "", 4, kSites96},
    {97, "Up Ribbon", "mso-spt54", "", 4, kSites97},
    {98, "Down Ribbon", "mso-spt53", "", 4, nullptr},
    {99, "Curved Up Ribbon", "mso-spt108", "", 4, kSites99},
    {100, "Curved Down Ribbon", "mso-spt107", "", 4, kSites100},
    {101, "Vertical Scroll", "vertical-scroll", "verticalScroll", 4, kSites101},
    {102, "Horizontal Scroll", "horizontal-scroll", "horizontalScroll", 4, kSites102},
    {103, "Wave", "mso-spt64", "", 4, nullptr},
    {104, "Double Wave", "mso-spt188", "", 4, nullptr},
    {105, "Rectangular Callout", "rectangular-callout", "wedgeRectCallout", 5, nullptr},
    {106, "Rounded Rectangular Callout", "round-rectangular-callout", "wedgeRoundRectCallout", 5, kSites106},
    {107, "Oval Callout", "round-callout", "wedgeEllipseCallout", 9, nullptr},
    {108, "Cloud Callout", "cloud-callout", "cloudCallout", 5, kSites108},
    {109, "Line Callout1", "mso-spt180", "borderCallout1", 5, kSites109},
    {110, "Line Callout2", "line-callout-1", "borderCallout1", 5, kSites110},
    {111, "Line Callout3", "line-callout-2", "borderCallout2", 5, kSites111},
    {112, "Line Callout4", "mso-spt49", "", 5, kSites112},
    {113, "Line Callout1 Accent Bar", "mso-spt179", "", 5, kSites113},
    {114, "Line Callout2 Accent Bar", "mso-spt44", "", 5, kSites114},
    {115, "Line Callout3 Accent Bar", "mso-spt45", "", 5, kSites115},
    {116, "Line Callout4 Accent Bar", "mso-spt46", "", 5, kSites116},
    {117, "Line Callout1 No Border", "mso-spt178", "", 5, kSites117},
    {118, "Line Callout2 No Border", "mso-spt41", "", 5, kSites118},
    {119, "Line Callout3 No Border", "mso-spt42", "", 5, kSites119},
    {120, "Line Callout4 No Border", "mso-spt43", "", 5, kSites120},
    {121, "Line Callout1 Border and Accent Bar", "line-callout-3", "borderCallout3", 5, kSites121},
    {122, "Line Callout2 Border and Accent Bar", "mso-spt50", "", 5, kSites122},
    {123, "Line Callout3 Border and Accent Bar", "mso-spt51", "", 5, kSites123},
    {124, "Line Callout4 Border and Accent Bar", "mso-spt52", "", 5, kSites124},
    {125, "Action Button Custom", "mso-spt189", "", 8, kSites125},
    {126, "Action Button Home", "mso-spt190", "", 8, kSites126},
    {127, "Action Button Help", "mso-spt191", "", 8, kSites127},
    {128, "Action Button Information", "mso-spt192", "", 8, kSites128},
    {129, "Action Button Back or Previous", "mso-spt194", "", 8, kSites129},
    {130, "Action Button Forward or Next", "mso-spt193", "", 8, kSites130},
    {131, "Action Button Beginning", "mso-spt196", "", 8, kSites131},
    {132, "Action Button End", "mso-spt195", "", 8, kSites132},
    {133, "Action Button Return", "mso-spt197", "", 8, kSites133},
    {134, "Action Button Document", "mso-spt198", "", 8, kSites134},
    {135, "Action Button Sound", "mso-spt199", "", 8, kSites135},
    {136, "Action Button Movie", "mso-spt200", "", 8, kSites136},
    {137, "Balloon", "mso-spt17", "", 5, kSites137},
};

constexpr std::size_t kTypeCount = sizeof(kTypes) / sizeof(kTypes[0]);
static_assert(kTypeCount == 137, "one entry for each id 1..137");

}  // namespace

const AutoShapeTypeInfo* FindAutoShapeType(int id) {
  if (id < 1 || id > static_cast<int>(kTypeCount)) return nullptr;
  return &kTypes[id - 1];
}

int AutoShapeTypeFromOfficeType(const std::string& type) {
  for (const AutoShapeTypeInfo& info : kTypes) {
    if (type == info.officeType) return info.id;
  }
  const std::string ooxml = "ooxml-";
  if (type.compare(0, ooxml.size(), ooxml) == 0) {
    std::string preset = type.substr(ooxml.size());
    for (const AutoShapeTypeInfo& info : kTypes)
      if (*info.drawingMlPreset && preset == info.drawingMlPreset) return info.id;
  }
  return 0;
}

}  // namespace nivarel::office
