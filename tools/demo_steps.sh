#!/bin/sh
# Shows the plug-in at work, step by step: demo_steps.sh WORKSPACE [WINE.SH] HOSTSIM.EXE
#
# WORKSPACE is a copy of samples/ that may be changed. A step that does not do what it says ends the demo.
set -eu

[ $# = 2 ] || [ $# = 3 ] || { sed -n '2,4s/^# \{0,1\}//p' "$0" >&2; exit 2; }
launcher=$(realpath "$2")
program=${3:+$(realpath "$3")}
home=$(dirname "${program:-$launcher}")/../korvane
tools=$(realpath "$(dirname "$0")")
cd "$1"
number=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "demo: step $number failed: $*" >&2
    exit 1
}

headline() {
    number=$((number + 1))
    printf '\n====================================================================================================\n'
    printf '%d. %s\n\n' "$number" "$*"
}

# start ARGUMENT...: runs hostsim; its output goes to $work/out.
start() {
    code=0
    "$launcher" ${program:+"$program"} "$@" >"$work/raw" 2>&1 || code=$?
    tr -d '\r' <"$work/raw" >"$work/out"
    [ $code = 0 ] && return
    cat "$work/out" >&2
    fail "hostsim $* ended with $code"
}

# The same, shown as a user would type it in the workspace.
hostsim() {
    echo "  \$ hostsim $*" | sed 's/ --user / \\\n        --user /'
    echo
    start "$@"
}

print() {
    sed 's/^/    /; s/ *$//' "${1:-$work/out}"
}

# Lines that repeat become one with their number.
print_tree() {
    awk 'function put() { if (count) print "    " line (count > 1 ? "  (" count " times)" : "") }
         $0 != line { put(); line = $0; count = 0 }
         { count++ }
         END { put() }' "$work/out"
}

# Words on lines that fit a terminal.
print_words() {
    awk '{ if (length(line) + length($0) > 94) { print "      " line; line = "" }
           line = line (line == "" ? "" : "  ") $0 }
         END { print "      " line }' "$1"
}

# value MODEL PARAMETER: the text in the newest file of the model; empty: no such parameter.
value() {
    newest=$(find roller_conveyor -name "$1.asm.*" -o -name "$1.prt.*" | sort -t . -k 3n | tail -n 1)
    sed -n "s/.*{\"name\":\"$2\",\"type\":\"string\",\"value\":\"\([^\"]*\)\".*/\1/p" "$newest"
}

expect() {
    found=$(value "$1" "$2")
    [ "$found" = "$3" ] || fail "$2 of $1 is \"$found\", not \"$3\""
}

count_files() {
    find "$1" -type f | wc -l
}

# The demo's own plug-in: its commands keep settings in their folder.
cp -R "$home" plugin

headline "The menu: fifty-four commands, and which of them are available while an assembly is open"
hostsim --plugin plugin commands --mode assembly
print
[ "$(wc -l <"$work/out")" -eq 54 ] || fail "there are not 54 commands"

headline "The sample workspace: a driven roller conveyor"
hostsim show roller_conveyor --workspace roller_conveyor --levels 1
print_tree
start show roller_conveyor --workspace roller_conveyor
sed '1,/^components/d; s/^ *//; s/  .*//' "$work/out" >"$work/tree"
printf '\n    All levels together: %d placements of %d models.\n' \
    "$(wc -l <"$work/tree")" "$(sort -u "$work/tree" | wc -l)"
echo "    Commands leave out what is suppressed, internal or missing."

headline "The dialog of the parameter editor, made from the plug-in's layout file"
hostsim --plugin plugin dialog KvParams
print

headline "One of the parts, before"
hostsim show leg_tube --workspace roller_conveyor
print
expect leg_tube 项目号 ""

headline "A new parameter for the whole assembly, except standard and purchased parts (prefixes std_ and buy_)"
printf '  The user at the dialog, scripts/add_project_number.user:\n\n'
print scripts/add_project_number.user
printf '\n'
before=$(count_files roller_conveyor)
hostsim --plugin plugin run KvParams --workspace roller_conveyor --model roller_conveyor \
    --user scripts/add_project_number.user --save
print
printf '\n    %d models have changed; each was saved as a new version of its file.\n' \
    $(($(count_files roller_conveyor) - before))
expect buy_gear_motor_075kw 项目号 ""

headline "The same part, after, and the lines of its file that differ"
hostsim show leg_tube --workspace roller_conveyor
print
expect leg_tube 项目号 P24-117
printf '\n  $ diff roller_conveyor/leg_tube.prt.1 roller_conveyor/leg_tube.prt.2\n\n'
diff roller_conveyor/leg_tube.prt.1 roller_conveyor/leg_tube.prt.2 >"$work/out" && fail "the file is as before"
print

headline "Outline sizes and the sheet sizes of the drawings, written into parameters"
hostsim --plugin plugin run KvParams --workspace roller_conveyor --model roller_conveyor \
    --user scripts/outline_and_sheets.user --save
print
printf '\n    model            sheets    outline size\n'
for model in roller_conveyor drive_unit roller_unit roller_shaft bearing_housing leg_tube; do
    printf '    %-15s  %-8s  %s\n' $model "$(value $model 图幅)" "$(value $model 外形尺寸)"
done
expect roller_conveyor 外形尺寸 1200×823×750
expect roller_conveyor 图幅 A1,A3,A3
expect roller_shaft 外形尺寸 680×15×15

headline "The bill of materials: each model with its total, then the assembly with its direct components"
printf '  The user at the dialog, scripts/bom_lists.user:\n\n'
print scripts/bom_lists.user
printf '\n'
hostsim --plugin plugin run KvBom --workspace roller_conveyor --model roller_conveyor --user scripts/bom_lists.user
print
printf '\n    {17} is the colour by which the host shows the rows of assemblies.\n'

headline "The whole structure as a workbook"
hostsim --plugin plugin run KvBom --workspace roller_conveyor --model roller_conveyor --user scripts/bom_export.user
print
[ -s roller_conveyor/roller_conveyor_bom.xlsx ] || fail "no workbook was written"
printf '\n    '
ls -s --block-size=1 roller_conveyor/roller_conveyor_bom.xlsx | awk '{ print $2 ": " $1 " bytes on disk" }'
code=0
"$tools/sheet_picture.sh" roller_conveyor/roller_conveyor_bom.xlsx roller_conveyor_bom.png >"$work/out" 2>&1 || code=$?
[ $code = 0 ] && echo "roller_conveyor_bom.png: its first page" >"$work/out"
[ $code = 0 ] || [ $code = 3 ] || { cat "$work/out" >&2; fail "no picture of the workbook"; }
print

headline "The same without a spreadsheet application: filtered in the dialog, written as CSV and as a page"
hostsim --plugin plugin run KvBom --workspace roller_conveyor --model roller_conveyor --user scripts/bom_page.user
print
[ -s roller_conveyor/roller_conveyor_bom.csv ] || fail "no CSV was written"
[ -s roller_conveyor/roller_conveyor_bom.html ] || fail "no page was written"
printf '\n  $ head -n 3 roller_conveyor/roller_conveyor_bom.csv\n\n'
head -n 3 roller_conveyor/roller_conveyor_bom.csv | sed 's/^/    /'

headline "What has changed since that CSV: somebody gives the ribs another material"
newest=$(ls roller_conveyor/leg_rib.prt.* | sort -t . -k 3 -n | tail -n 1)
sed -i 's/\("name":"材料","type":"string","value":"\)[^"]*/\1Q355B/' "$newest"
hostsim --plugin plugin run KvBom --workspace roller_conveyor --model roller_conveyor --user scripts/bom_compare.user
print
grep -q Q355B "$work/out" || fail "the comparison does not show the new material"

headline "How often each model is placed, as a parameter of the model"
hostsim --plugin plugin run KvMdlCount --workspace roller_conveyor --model roller_conveyor --save
grep -v '^saved' "$work/out" >"$work/shown"
print "$work/shown"
printf '\n    %d models were saved; the gear motor is read-only in the sample.\n' "$(grep -c '^saved' "$work/out")"
printf '\n    model                 quantity\n'
for model in roller_unit buy_bearing_6002_2z std_iso7089_m10 std_iso4762_m6x20; do
    start show $model --workspace roller_conveyor
    printf '    %-20s  %s\n' $model "$(sed -n 's/^ *数量 *[^0-9]*\([0-9]*\).*/\1/p' "$work/out")"
done
echo "    The screw is an instance of a family table: such models are passed over unless the settings say otherwise."

headline "A backup of all components and their drawings, and the files in it"
mkdir backup
hostsim --plugin plugin run KvBackup --workspace roller_conveyor --model roller_conveyor --user scripts/backup.user
print
for kind in asm prt drw; do
    find backup -name "*.$kind.*" | sed 's|.*/||; s/\.[0-9]*$//' | sort -u >"$work/$kind"
    [ -s "$work/$kind" ] || fail "no *.$kind in the backup"
    printf '\n    %d *.%s:\n' "$(wc -l <"$work/$kind")" $kind
    print_words "$work/$kind"
done

headline "A command of the right-click menu: the drawing of a component that is selected in the assembly"
printf '  The user at the screen, scripts/open_drawing.user:\n\n'
print scripts/open_drawing.user
printf '\n'
hostsim --plugin plugin run KvOpenDrw --workspace roller_conveyor --model roller_conveyor --setting RmbDisable=0 \
    --user scripts/open_drawing.user
print
grep -q '^shown  *DRIVE_SHAFT.DRW' "$work/out" || fail "the drawing is not shown"
printf '\n    The right-click menu is off in the settings that ship; --setting turns it on for this run.\n'

headline "All drawings exported to five formats, a file for each sheet, named after drawing number and name"
printf '  The user at the dialog, scripts/export_drawings.user:\n\n'
print scripts/export_drawings.user
printf '\n'
hostsim --plugin plugin run KvExport --workspace roller_conveyor --model roller_conveyor \
    --user scripts/export_drawings.user
print
printf '\n  What was written, with what the files of two drawings hold:\n\n'
hostsim exports roller_conveyor
for format in DWG DXF PDF STP IGS; do
    grep "^$format" "$work/out" >"$work/files" || fail "nothing was exported to $format"
    printf '    %d files in %s\n' "$(wc -l <"$work/files")" $format
    grep -e BEARING_HOUSING -e DRIVE_SHAFT "$work/files" | sed 's/^/      /; s/ *$//'
done
[ "$(tail -n 1 "$work/out")" = "98 exported files" ] || fail "there are not 98 exported files"

headline "A drawing of an assembly from the template for A3, which the settings name"
hostsim --plugin plugin run KvConfig --workspace roller_conveyor --user scripts/configure_templates.user
printf '\n  The user at the dialog, scripts/drawing_by_size.user:\n\n'
print scripts/drawing_by_size.user
printf '\n'
hostsim --plugin plugin run KvNewDrw --workspace roller_conveyor --model side_guide --user scripts/drawing_by_size.user --save
print
printf '\n'
hostsim show side_guide.drw --workspace roller_conveyor
print
grep -q 'SIDE_GUIDE.ASM' "$work/out" || fail "the drawing does not show the assembly"

headline "A drawing of a part from the plug-in's own template, with a format that the user chooses"
cp templates/kv.drw.1 plugin/tp/
hostsim --plugin plugin run NewDraw --workspace roller_conveyor --model drive_base_plate \
    --user scripts/drawing_by_format.user --save
print
printf '\n'
hostsim show drive_base_plate.drw --workspace roller_conveyor
print
grep -q 'format TITLEBLOCK_A3' "$work/out" || fail "the drawing has no format"

headline "Sheets on which a main view has another scale than the sheet"
hostsim --plugin plugin run KvDrwScaleCheck --workspace roller_conveyor
print
grep -q "DRIVE_SHAFT" "$work/out" || fail "the section of the drive shaft is not found"

headline "One scale for all views with one of their own, and for the drawing"
hostsim --plugin plugin run SameScale --workspace roller_conveyor --model drive_shaft.drw \
    --user scripts/one_scale.user --save
print
printf '\n'
hostsim show drive_shaft.drw --workspace roller_conveyor
print
grep -q 'own scale 0.5' "$work/out" || fail "the section has not got the scale"

headline "Texts of dimensions in a drawing: several at once, then one as it is typed"
hostsim --plugin plugin run KvDimModify --workspace roller_conveyor --model drive_shaft.drw \
    --user scripts/dimension_texts.user --save
print
hostsim --plugin plugin run KvSingleDim --workspace roller_conveyor --model drive_shaft.drw \
    --user scripts/single_dimension.user --save
print
newest=$(find roller_conveyor -name "drive_shaft.prt.*" | sort -t . -k 3n | tail -n 1)
grep -q '"text":\["Ø@D","配作"\]' "$newest" || fail "the texts were not written"
grep -q '总长 @D' "$newest" || fail "the single text was not written"

headline "Another format for all sheets that have the old one; what holds a table of the old one is left alone"
hostsim --plugin plugin run KvFrmReplace --workspace roller_conveyor --user scripts/replace_format.user
print
newest=$(find roller_conveyor -name "bearing_housing.drw.*" | sort -t . -k 3n | tail -n 1)
grep -q 'COMPANY_A3' "$newest" || fail "the format was not replaced"
[ -z "$(grep -l COMPANY_A3 roller_conveyor/drive_shaft.drw.*)" ] || fail "a sheet with a table was changed"

headline "Relations for all parts of our own: only lines that a part does not have yet are added"
printf '  The user at the dialog, scripts/add_relations.user:\n\n'
print scripts/add_relations.user
printf '\n'
hostsim --plugin plugin run KvRelations --workspace roller_conveyor --model roller_conveyor \
    --user scripts/add_relations.user --save
grep -v '^saved' "$work/out" >"$work/shown"
print "$work/shown"
start show leg_tube --workspace roller_conveyor
sed -n '/^relations/,/^[^ r]/p' "$work/out" >"$work/shown"
grep -q '毛重 = ceil(MASS' "$work/shown" || fail "leg_tube has no relations"
printf '\n    leg_tube:\n'
print "$work/shown"

headline "A material for every part, a bend table for the sheet-metal parts, inches for all models"
for command in SetMat:set_material SetBendTable:set_bend_table SetUnit:set_units; do
    hostsim --plugin plugin run "${command%%:*}" --workspace roller_conveyor --model roller_conveyor \
        --user "scripts/${command##*:}.user" --save
    grep -v '^saved' "$work/out" >"$work/shown"
    print "$work/shown"
    printf '\n'
done
start show 左护罩 --workspace roller_conveyor
grep -e '^units' -e '^material' -e '^bend table' "$work/out" >"$work/shown"
[ "$(wc -l <"$work/shown")" -eq 3 ] || fail "左护罩 lacks some of it"
printf '    左护罩:\n'
print "$work/shown"

headline "A new part from the template, named after the assembly, on its default coordinate system"
hostsim --plugin plugin run NewPart --workspace roller_conveyor --model roller_conveyor \
    --option template_solidpart=../templates/start_part.prt --save
print
newest=$(find roller_conveyor -name "roller_conveyor.asm.*" | sort -t . -k 3n | tail -n 1)
grep -o '"model":"ROLLER_CONVEYOR-1.prt".*' "$newest" >"$work/out" || fail "the new part is not placed"
printf '\n    In the assembly: '
print | sed 's/^ *//'
grep -q '"constraints"' "$work/out" || fail "the new part is not constrained"

headline "One screw of many becomes a model of its own: the copy takes its place, and the host plays the macro"
printf '  The user, scripts/clone_screw.user:\n\n'
print scripts/clone_screw.user
printf '\n'
hostsim --plugin plugin run CloneAndReplace --workspace roller_conveyor --model roller_conveyor \
    --setting CompCopyAutoNum=byUser --user scripts/clone_screw.user --save
print
newest=$(find roller_conveyor -name "drive_unit.asm.*" | sort -t . -k 3n | tail -n 1)
grep -q '{"id":16,"model":"DRIVE_SCREW.prt"' "$newest" || fail "the screw was not replaced"

headline "A copy of a component for the user to place"
hostsim --plugin plugin run CloneComp --workspace roller_conveyor --model drive_unit \
    --user scripts/clone_hanger.user --save
print
grep -q 'DRIVE_HANGER-1' "$work/out" || fail "no copy was made"

headline "Parts of an assembly as one: merge features in a new part, and in one that is activated"
hostsim --plugin plugin run KvMerge --workspace roller_conveyor --model drive_unit \
    --option template_solidpart=../templates/start_part.prt --user scripts/merge_drive.user --save
print
hostsim --plugin plugin run KvMergeTo --workspace roller_conveyor --model drive_unit \
    --user scripts/merge_plate.user --save
print
printf '\n'
for model in drive_frame drive_base_plate; do
    newest=$(find roller_conveyor -name "$model.prt.*" | sort -t . -k 3n | tail -n 1)
    grep -o '"name":"合并[0-9]*","reference":"[^"]*"' "$newest" >"$work/out" || fail "nothing was merged into $model"
    sed "s/.*\(合并[0-9]*\)\",\"reference\":\"\(.*\)\"/    $model: \1 of \2/" "$work/out"
done

headline "A component loses its constraints and is fixed where it stands"
hostsim --plugin plugin run KvRemoveCons --workspace roller_conveyor --model drive_unit \
    --user scripts/fix_components.user --save
print
newest=$(find roller_conveyor -name "drive_unit.asm.*" | sort -t . -k 3n | tail -n 1)
grep -q 'GEAR_MOTOR.*"constraints":\[{"type":13}\]' "$newest" || fail "the gear motor is not fixed"

headline "New names for sub-assemblies and parts, with their drawings; every assembly above finds them"
printf '  The user at the dialog, scripts/rename.user:\n\n'
print scripts/rename.user
printf '\n'
hostsim --plugin plugin run KvRename --workspace roller_conveyor --model roller_conveyor --user scripts/rename.user
print
[ -e roller_conveyor/rc2_roller_unit.asm.1 ] || fail "ROLLER_UNIT has no file of its new name"
[ -e roller_conveyor/rc2_roller_unit.drw.1 ] || fail "the drawing was not renamed"
start show roller_conveyor --workspace roller_conveyor --levels 1
grep -q 'RC2_ROLLER_UNIT' "$work/out" || fail "the assembly on disk does not name RC2_ROLLER_UNIT"
printf '\n    The assembly on disk names RC2_ROLLER_UNIT; 撤销上次重命名 would take it all back.\n'

headline "The drive unit alone: all other parts are hidden"
hostsim --plugin plugin run KvShowAllComp --workspace roller_conveyor --model roller_conveyor --picture whole.svg
hostsim --plugin plugin run KvIsolate --workspace roller_conveyor --model roller_conveyor \
    --select "drive_unit path 11" --picture isolated.svg
print
all=$(grep -o '<polygon' whole.svg | wc -l)
left=$(grep -o '<polygon' isolated.svg | wc -l)
[ "$left" -gt 0 ] && [ "$left" -lt "$all" ] || fail "isolated.svg shows $left of $all faces"
printf '\n    isolated.svg: the window afterwards\n'

headline "Twelve standard views, the front by the conveyor's largest face"
hostsim --plugin plugin run TweViews --workspace roller_conveyor --model roller_conveyor --save
grep -v '^saved' "$work/out" >"$work/shown"
print "$work/shown"
start show roller_conveyor --workspace roller_conveyor --levels 0
grep -q 'KV_FRONT' "$work/out" || fail "the assembly has no views"
sed -n '/^saved views/,/^ /p' "$work/out" >"$work/shown"
print "$work/shown"

headline "A random colour for every part"
hostsim --plugin plugin run BatchColor --workspace roller_conveyor --model roller_conveyor \
    --user scripts/random_colours.user --picture colours.svg --save
grep -v '^saved' "$work/out" >"$work/shown"
print "$work/shown"
start show leg_tube --workspace roller_conveyor
grep -q '^colour ' "$work/out" || fail "leg_tube has no colour"
printf '\n    colours.svg: the window afterwards\n'

headline "The box around a plate along the drive shaft, and the stock to cut it from, as parameters"
printf '  The user at the dialog, scripts/stock.user:\n\n'
print scripts/stock.user
printf '\n'
hostsim --plugin plugin run KvBox --workspace roller_conveyor --model roller_conveyor --user scripts/stock.user --save
grep -v '^saved' "$work/out" >"$work/shown"
print "$work/shown"
start show drive_base_plate --workspace roller_conveyor
grep '下料' "$work/out" >"$work/shown" || fail "drive_base_plate has no stock size"
printf '\n    drive_base_plate:\n'
print "$work/shown"

headline "A simplified representation without small parts"
hostsim --plugin plugin run KvSimRep --workspace roller_conveyor --model roller_conveyor \
    --user scripts/small_parts.user --save
grep -v '^saved' "$work/out" >"$work/shown"
print "$work/shown"
start show roller_conveyor --workspace roller_conveyor --levels 0
grep -q 'LARGE_PARTS  leaves out' "$work/out" || fail "there is no representation"

headline "A workspace made of another program's STEP file, and how often each model is placed in it"
hostsim import import/hand_pump.stp --workspace hand_pump
print
printf '\n'
hostsim show hand_pump --workspace hand_pump
print
[ "$(grep -c 'ISO_4762_M8X20' "$work/out")" = 4 ] || fail "the screw is not placed four times"
printf '\n'
hostsim --plugin plugin run KvMdlCount --workspace hand_pump --model hand_pump --save
grep -q '^saved  *ISO_4762_M8X20.PRT' "$work/out" || fail "the screw has no quantity"
print

headline "What a command costs: host calls by function, time and memory"
hostsim --plugin plugin run KvParams --workspace roller_conveyor --model roller_conveyor \
    --user scripts/update_project_number.user --profile
print
grep -q '^host calls [1-9]' "$work/out" || fail "no call summary"

printf '\ndemo: all %d steps worked\n' $number
