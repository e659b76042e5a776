# The counts of count_instructions beside those of the baseline.
#
# In: lines "WORKLOAD PART INSTRUCTIONS", one for each part; $baseline: {WORKLOAD: {PART: ...}}.
# Out: with $store the new baseline; else a table, and the exit code 1 when the whole road of a
# workload, or its processing alone, needs over 5 % more than the baseline.

def counted: reduce inputs as $line ({};
  ($line | split(" ")) as [$workload, $part, $count] | .[$workload][$part] = ($count | tonumber));

# What the resolver needs for a unit, and what its floor needs; tokens have no floor.
def resolver: if .value then .value else .input + .process + .output end;
def floor_: if .value then null else .parse + .copy + .write end;

# The greatest change of what is judged, in percent; null without an old figure.
def change($old): . as $now |
  [{now: ($now | resolver), old: ($old | resolver)}, {now: $now.process, old: $old.process}] |
  map(select(.now and .old) | (.now / .old - 1) * 100) | max;

def left(width): . + " " * (width - length);
def right(width): tostring | " " * (width - length) + .;
def fixed: . * 100 | round | "\(. / 100 | trunc).\(. % 100 | tostring | if length < 2 then "0" + . else . end)";

def row($before): .key as $name | .value as $now |
  ($now | resolver) as $cost | ($now | floor_) as $least |
  $before[$name] as $old |
  { change: (if $old then $now | change($old) else null end),
    name: $name,
    line: (($name | left(24)) + ($cost | right(10)) +
      ($least // "" | right(10)) +
      (if $least then $cost / $least | fixed else "" end | right(8)) +
      (if $least then $now.process / $now.copy | fixed else "" end | right(8)) +
      (if $old then $old | resolver else "" end | right(10))) };

counted as $counts |
if $store then $counts else
  [$counts | to_entries[] | row($baseline)] as $rows |
  ([$rows[] | select(.change == null or .change > 5)]) as $worse |
  (($baseline | keys) - ($counts | keys)) as $gone |
  ([$rows[] | select(.change != null and .change < -5)]) as $better |
  ("instructions for a unit" | left(24)) + ("resolver" | right(10)) + ("floor" | right(10)) +
    ("ratio" | right(8)) + ("p/copy" | right(8)) + ("baseline" | right(10)),
  $rows[].line,
  ($better[] | "\(.name): \(-.change | fixed) % less than the baseline; renew it with scripts/bench --renew"),
  ($worse[] | "\(.name): " + (if .change then "\(.change | fixed) % more than the baseline" else "not in the baseline" end)),
  ($gone[] | "\(.): in the baseline, but not counted"),
  (if $worse + $gone == [] then empty else halt_error(1) end)
end
