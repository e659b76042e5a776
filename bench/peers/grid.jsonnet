// Of several ways to write a step, this takes the one that jsonnet runs fastest.
local percent(text, whole) = std.parseJson(std.strReplace(text, '%', '')) * whole / 100;

// "#RRGGBBAA" as the number 0xAARRGGBB.
local colour(text) = std.parseHex(std.substr(text, 7, 2) + std.substr(text, 1, 6));

local columns = 10, width = 100, height = 50;

local cell(title, i) =
  local x = i % columns * width, y = std.floor(i / columns) * height;
  [
    {
      Bounds: [x, y, percent('100%', width), percent('50%', height)],
      RenderType: 2,
      Display: [colour('#FF8000FF'), colour('#00000080')],
      Contents: [title + ' ' + i],
    },
    {
      Bounds: [
        x + percent('10%', width),
        y + percent('50%', height),
        percent('80%', width),
        percent('50%', height),
      ],
      RenderType: 3,
      Display: [colour('#FFFFFFFF')],
      Contents: [std.asciiLower('Images/Dish' + i + '.PNG')],
    },
  ];

function(title, count) {
  Contents: [{ Contents: std.flatMap(function(i) cell(title, i), std.range(0, count - 1)) }],
}
