# docs/architecture.md names every room, and no room uses another than it says.

load ../cli/helper

page=$repository/docs/architecture.md

@test "every folder is a room of the table" {
  cd "$repository"
  for folder in */ src/*/ src/formats/*/ cli/*/; do
    case $folder in build/ | src/) continue ;; esac
    grep -q "^| \`$folder\` |" "$page" || { echo "$folder is missing"; false; }
  done
  for folder in $(sed -n 's/^| `\([a-z/]*\)` |.*/\1/p' "$page"); do
    [ -d "$folder" ] || { echo "$folder is gone"; false; }
  done
}

@test "rooms include what they may use" {
  cd "$repository"
  for room in cli src/api src/formats src/xml src/model src/text src/movautil; do
    allowed=" ${room##*/} $(sed -n "s;^| \`$room/\` | .* | \(.*\) |\$;\1;p" "$page" | tr -cd 'a-z \n') "
    for used in $(grep -rhoE '^#include "[a-z]+/' "$room" | sed 's/.*"//; s;/;;; s/^mova$/include/' | sort -u); do
      [[ $allowed == *" $used "* ]] || { echo "$room uses $used"; false; }
    done
  done
}

@test "the sources that it names exist" {
  cd "$repository"
  for file in $(grep -o '\(src\|cli\|tests\)/[A-Za-z/]*\.\(cpp\|h\)' "$page"); do [ -f "$file" ]; done
}
