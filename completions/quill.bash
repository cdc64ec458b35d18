# bash completion for quill: commands, their options, option values, and
# Verilog or constraint files for the paths.

_quill_values() {
  case "$1" in
    --format)
      if [ "$2" = highlight ]; then echo "text json"; else echo "text json sarif github raw"; fi ;;
    --error-on) echo "warning error" ;;
    --color) echo "auto always never" ;;
  esac
}

_quill() {
  local cur prev command word i
  cur=${COMP_WORDS[COMP_CWORD]}
  prev=${COMP_WORDS[COMP_CWORD-1]}
  COMPREPLY=()

  command=""
  for ((i = 1; i < COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    case "$word" in
      format | lint | highlight | config | lsp | version) command=$word; break ;;
    esac
  done

  if [ -z "$command" ]; then
    COMPREPLY=($(compgen -W "format lint highlight config lsp version --help --version" -- "$cur"))
    return 0
  fi

  local common="-h --help -j --jobs --stdin-name --config --isolated --no-ignore"
  local options extensions="v|sv|vh|svh"
  case "$command" in
    format)
      options="$common -i --in-place --check --diff --force" ;;
    lint)
      options="$common --format --max-findings --error-on --color --whole-file
               --report-unused-suppressions --statistics --exact --no-filter -D --define -U --undefine" ;;
    highlight)
      options="$common --format --color"
      extensions="xdc|sdc|tcl|qsf|cst|pcf|lpf|ucf" ;;
    config) options="-h --help --config --isolated"; extensions="" ;;
    *) COMPREPLY=($(compgen -W "-h --help" -- "$cur")); return 0 ;;
  esac

  # A value after "--option=" (bash splits the word at "=") or "--option ".
  local option=""
  if [ "$cur" = "=" ]; then
    option=$prev; cur=""
  elif [ "$prev" = "=" ] && [ "$COMP_CWORD" -ge 2 ]; then
    option=${COMP_WORDS[COMP_CWORD-2]}
  else
    case "$prev" in
      --format | --error-on | --color) option=$prev ;;
      --config)
        local path
        while IFS= read -r path; do
          if [ -d "$path" ] || [[ "$path" == *.toml ]]; then COMPREPLY+=("$path"); fi
        done < <(compgen -f -- "$cur")
        return 0 ;;
      -j | --jobs | --max-findings | --stdin-name | -D | --define | -U | --undefine) return 0 ;;
      --no-filter)
        COMPREPLY=($(compgen -W "empty-name read-only-driver absent-assignment generate-scope port-redeclaration interface-items default-before-branch member-scopes initializer-names absent-use intended-latch hierarchical-paths absent-branch letter-case assertion-items assigned-first complete-paths block-locals" -- "$cur"))
        return 0 ;;
    esac
  fi
  if [ -n "$option" ]; then
    COMPREPLY=($(compgen -W "$(_quill_values "$option" "$command")" -- "$cur"))
    return 0
  fi

  if [[ "$cur" == -* ]]; then
    COMPREPLY=($(compgen -W "$options" -- "$cur"))
  elif [ -n "$extensions" ]; then
    local path
    while IFS= read -r path; do
      # Folders, and files with one of the command's extensions in any case.
      if [ -d "$path" ] || [[ "${path,,}" == *.@($extensions) ]]; then COMPREPLY+=("$path"); fi
    done < <(compgen -f -- "$cur")
  else
    COMPREPLY=($(compgen -f -- "$cur"))
  fi
  return 0
}

complete -o filenames -o bashdefault -F _quill quill
