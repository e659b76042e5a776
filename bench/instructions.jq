# The counts of count_instructions beside those of the baseline and beside the targets.
#
# In: lines "WORKLOAD PASS STEP INSTRUCTIONS", one for each step of a pass or of the floor; $baseline:
# {WORKLOAD: {PASS: {STEP: ...}}}.
# Out: with $store the new baseline; else a table, and the exit code 1 when a pass of a workload misses
# its target, or needs over 5 % more than the baseline.

# The greatest ratios to the floor that a pass may have.
def targets:
  {first: 1.30, steady: 1.00} as $grid |
  {
    "grid/100": $grid,
    "static/300": {first: 1.00, steady: 0.45},
    "list/100": {steady: 1.30}, "list/1000": {steady: 1.30},
    "include/11": {first: 1.05, steady: 0.50},
    "example/lobby": {first: 1.30, steady: 0.85}
  };

def counted: reduce inputs as $line ({};
  ($line | split(" ")) as [$workload, $pass, $step, $count] |
  .[$workload][$pass][$step] = ($count | tonumber));

# What each pass needs for a unit, and the floor: {PASS: ...}.
def sums: map_values(add);

# The greatest change of a pass, in percent; null without an old figure.
def change($old): to_entries | map(select(.key != "floor" and $old[.key]) |
  (.value / $old[.key] - 1) * 100) | max;

def left(width): . + " " * (width - length);
def right(width): tostring | " " * (width - length) + .;
def fixed: . * 100 | round | "\(. / 100 | trunc).\(. % 100 | tostring | if length < 2 then "0" + . else . end)";

# Columns for a pass: its cost, the ratio to the floor, and the target with the verdict.
def judged($least; $target): . as $cost | ($cost / $least) as $ratio |
  { missed: ($target != null and $ratio > $target),
    line: (($cost | right(12)) + ($ratio | fixed | right(7)) +
      (if $target then "  \($target | fixed) " + (if $ratio > $target then "MISSED" else "met" end)
       else "" end | left(13))) };

def row($baseline): .key as $name | (.value | sums) as $now | $baseline[$name] as $old |
  {name: $name, change: (if $old then $now | change($old | sums) else null end)} +
  if $now.token then {missed: [], line: (($name | left(24)) + ($now.token | right(10)))}
  else
    (targets[$name] // {}) as $target |
    ($now.first | judged($now.floor; $target.first)) as $first |
    ($now.steady | judged($now.floor; $target.steady)) as $steady |
    { missed: [$first, $steady | select(.missed)],
      line: (($name | left(24)) + ($now.floor | right(10)) + $first.line + $steady.line |
        sub(" +$"; "")) }
  end;

counted as $counts |
if $store then $counts else
  [$counts | to_entries[] | row($baseline)] as $rows |
  ([$rows[] | select(.change == null or .change > 5)]) as $worse |
  (($baseline | keys) - ($counts | keys)) as $gone |
  ([$rows[] | select(.change != null and .change < -5)]) as $better |
  ([$rows[].missed[]] | length) as $missed |
  ("instructions for a unit" | left(24)) + ("floor" | right(10)) +
    ("first pass" | right(12)) + ("ratio" | right(7)) + ("  target" | left(13)) +
    ("steady pass" | right(12)) + ("ratio" | right(7)) + "  target",
  $rows[].line,
  ($better[] | "\(.name): \(-.change | fixed) % less than the baseline; renew it with scripts/bench --renew"),
  ($worse[] | "\(.name): " + (if .change then "\(.change | fixed) % more than the baseline" else "not in the baseline" end)),
  ($gone[] | "\(.): in the baseline, but not counted"),
  (if $missed > 0 then "\($missed) targets are missed" else empty end),
  (if $worse + $gone == [] and $missed == 0 then empty else halt_error(1) end)
end
