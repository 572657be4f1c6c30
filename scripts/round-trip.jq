# Compares two scenes, before and after a round trip, and prints one row of ./demo's table: what came back.
# Called with --slurp on the two scene files and --arg name.

# One entry a shape: the polygons of one path count once, by the last of them.
def shapes: [.items[].polygons[]? | select((.tags.SPAT // "end") | test("^end"))];
def counts: group_by(.) | map({key: (.[0] | tostring), value: length}) | from_entries;
# How many of the values of `before` are found again in `after`.
def found(before; after): (after | counts) as $after | before | counts | to_entries
    | map([.value, $after[.key] // 0] | min) | add // 0;
def share(before; after): "\(found(before; after))/\(before | length)";
def kinds: map(.tags.PRIM // "" | sub("\\{.*"; ""));
def styles: map(.tags | to_entries[] | select(.key | test("^(FILL|FILO|FILR|OPAC|L[A-Z]+|DARR|DOFF|MLIM|CPAT)$"))
    | [.key, .value]);
def channel(name): [.items[].channels[name] // empty | select(. != "")] | join("");
def groups: [channel("groupdefs") | match("g=id\\{[0-9]+\\}parent\\{[^}]*\\}"; "g") | .string];
def same(before; after): if before == after then (if before == "" then "-" else "same" end) else "changed" end;
# Attributes of the root in any order.
def root: channel("svgrootdef") | [match("[^ =<]+=\"[^\"]*\""; "g") | .string] | sort | join(" ");

.[0] as $before | .[1] as $after
| [$name,
   share($before | shapes | kinds; $after | shapes | kinds),
   share($before | shapes | styles; $after | shapes | styles),
   share($before | groups; $after | groups),
   same($before | channel("svgdefs"); $after | channel("svgdefs")),
   same($before | channel("clipdefs"); $after | channel("clipdefs")),
   same($before | channel("svgdoctype"); $after | channel("svgdoctype")),
   same($before | root; $after | root)]
| @tsv
