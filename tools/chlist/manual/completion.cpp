// The functions that the shells call when a line of the tool is to be completed.
#include "chlist/manual/completion.h"

#include <fmt/format.h>

namespace chlist {

// Bash ends words at ':' and '=', and puts what it is given behind the last of them. Words with blanks are quoted,
// unless a quotation is open. A word that ends in '=' goes on.
std::string bash_completion(const std::string &program) {
  return fmt::format(R"(# bash completion for {0}
_{0}() {{
  local line=${{COMP_LINE:0:COMP_POINT}} word
  local typed=${{line##*[[:space:]]}}
  local prefix=${{typed%"${{typed##*[:=]}}"}}
  local closed='^([^"'\''\\]|\\.|"[^"]*"|'\''[^'\'']*'\'')*$'
  COMPREPLY=()
  while IFS=$'\t' read -r word _; do
    [[ $word == *= ]] && compopt -o nospace 2>/dev/null
    if [[ $line =~ $closed ]]; then
      printf -v word %q "$word"
      word=${{word#"$prefix"}}
    fi
    COMPREPLY+=("$word")
  done < <("$1" complete --line "$line" 2>/dev/null)
}}
complete -o default -F _{0} {0}
)",
                     program);
}

std::string zsh_completion(const std::string &program) {
  return fmt::format(R"(#compdef {0}

_{0}() {{
  local line word
  local -a closed open
  while IFS= read -r line; do
    word=${{line%%$'\t'*}}
    if [[ $word == *= ]]; then
      open+=("${{word//:/\\:}}:${{line#*$'\t'}}")
    else
      closed+=("${{word//:/\\:}}:${{line#*$'\t'}}")
    fi
  done < <("${{(Q)words[1]}}" complete "${{(@Q)words[2,CURRENT]}}" 2>/dev/null)
  (( $#closed )) && _describe -t words {0} closed
  (( $#open )) && _describe -t words {0} open -S ''
  (( $#closed + $#open )) || _files
}}

_{0} "$@"
)",
                     program);
}

std::string fish_completion(const std::string &program) {
  return fmt::format(R"(# fish completion for {0}
function __{0}_words
  set -l words (commandline -opc) (commandline -ct)
  command $words[1] complete $words[2..-1] 2>/dev/null
end
complete -c {0} -f -a '(__{0}_words)'
complete -c {0} -n 'not count (__{0}_words) >/dev/null' -F
)",
                     program);
}

}  // namespace chlist
