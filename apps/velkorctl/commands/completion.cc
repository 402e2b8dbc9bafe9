/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl completion: the scripts for shells, and what they ask for. */
#include "velkorctl/completion.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_codes.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_settings.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using Candidates = std::vector<Candidate>;

struct Shell {
  const char *name;
  /** Shows what "completion --candidates" prints: a word per line, then a tab and a few words. */
  const char *script;
};

constexpr std::array shells{
    Shell{"bash", R"sh(# bash completion for velkorctl
_velkorctl() {
  local word
  COMPREPLY=()
  while IFS=$'\t' read -r word _; do
    COMPREPLY+=("$(printf %q "$word")")
  done < <("${COMP_WORDS[0]}" completion --candidates -- \
    "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}
complete -o default -F _velkorctl velkorctl
)sh"},
    Shell{"zsh", R"sh(#compdef velkorctl
_velkorctl() {
  local line
  local -a described
  for line in "${(@f)$("${words[1]}" completion --candidates -- \
                       "${(@Q)words[2,CURRENT]}" 2>/dev/null)}"; do
    [[ -n $line ]] && described+=("${${line%%$'\t'*}//:/\\:}:${line#*$'\t'}")
  done
  [[ $PREFIX == --*=* ]] && compset -P '*='
  if (( $#described )); then
    _describe -V velkorctl described
  else
    _files
  fi
}
if [[ $funcstack[1] == _velkorctl ]]; then _velkorctl "$@"; else compdef _velkorctl velkorctl; fi
)sh"},
    Shell{"fish", R"sh(# fish completion for velkorctl
function __velkorctl_candidates
  set -l before (commandline -opc)
  set -l current (commandline -ct)
  set -l found ($before[1] completion --candidates -- $before[2..-1] "$current" 2>/dev/null)
  if test (count $found) -eq 0
    __fish_complete_path "$current"
  else
    set -l prefix (string match -r '^--[^=]+=' -- "$current")
    printf '%s\n' "$prefix"$found
  end
end
complete -c velkorctl -f -a '(__velkorctl_candidates)'
)sh"},
};

Candidates shell_names() {
  Candidates names;
  for (const Shell &shell : shells)
    names.push_back({shell.name});
  return names;
}

Candidates setting_keys() {
  Candidates keys;
  for (guint32 index = 0; index < zox_settings_count(); ++index) {
    const ZoxSetting &setting = *zox_settings_at(index);
    keys.push_back({setting.key, setting.description});
  }
  return keys;
}

Candidates state_words() {
  Candidates words;
  for (gint32 state = ZOX_STATUS_UNKNOWN; state <= ZOX_STATUS_UNSUPPORTED; ++state)
    words.push_back({zox_string_status(state)});
  return words;
}

Candidates sub_categories(const std::string &category) {
  constexpr guint32 most = 10;
  Candidates names;
  for (guint32 sub = 0; sub < most; ++sub)
    names.push_back({zox_category_get_scat_name(category_number(category), sub)});
  return names;
}

Candidates filter_names() {
  Candidates names;
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters))
    names.push_back({std::string(view_of(filter->name)), zox_string_category(filter->cat)});
  return names;
}

Candidates texts_of_setting(const char *key) {
  Candidates texts;
  ListBuilder<GString, free_string> owned;
  GSList *list = zox_settings_get_list(key);
  for (GString *text : Items<GString>(list)) {
    owned.append(text);
    texts.push_back({std::string(view_of(text))});
  }
  g_slist_free(list);
  return texts;
}

/** The values of an argument or option; those that need it begin with the core's settings. */
struct Source {
  /** The end of the name. */
  std::string_view name;
  Candidates (*values)();
  bool needs_core = false;
};

constexpr std::array sources{
    Source{"completion SHELL", shell_names},
    Source{" KEY", setting_keys},
    Source{"account keep PLACE",
           [] {
             return words_only({"file", "keyring"});
           }},
    Source{"tags CATEGORY", [] { return words_only(category_names()); }},
    Source{"--category", [] { return words_only(category_names()); }},
    Source{"--status", state_words},
    Source{"--filter", filter_names, true},
    Source{" FILTER", filter_names, true},
    Source{"watch remove ID", [] { return texts_of_setting("watchlist"); }, true},
    Source{"watchers remove TEXT", [] { return texts_of_setting("watcher"); }, true},
    Source{"badwords remove TEXT", [] { return texts_of_setting("badword"); }, true},
};

constexpr std::string_view sub_category_option = "--sub-category ";

Candidates values_of(const std::string &name, const GlobalOptions &options) {
  if (name.starts_with(sub_category_option))
    return sub_categories(name.substr(sub_category_option.size()));
  const auto *source =
      std::ranges::find_if(sources, [&](const Source &each) { return name.ends_with(each.name); });
  if (source == sources.end())
    return {};
  if (!source->needs_core)
    return source->values();
  const CoreSession session(options, CoreSession::Access::read, Load::settings);
  return source->values();
}

/** A line that is being typed has "~" where the shell will put the home directory. */
std::string with_home(const std::string &directory) {
  const bool at_home = directory == "~" || directory.starts_with("~/");
  return at_home ? g_get_home_dir() + directory.substr(1) : directory;
}

Exit print_candidates(const Context &context) {
  const auto known_values = [&context](const std::string &name,
                                       const std::string &cache_directory) -> Candidates {
    try {
      GlobalOptions options = context.options;
      if (!cache_directory.empty())
        options.cache_dir = with_home(cache_directory);
      return values_of(name, options);
    } catch (const Failure &) {  // nobody waits for a message in the middle of a line
      return {};
    }
  };
  for (const Candidate &candidate :
       candidates_for(all_commands(), context.arguments.values("SHELL"), known_values))
    context.out.write(candidate.word + "\t" + candidate.about + "\n");
  return Exit::ok;
}

Exit run(const Context &context) {
  if (context.arguments.has("--candidates"))
    return print_candidates(context);
  const std::vector<std::string> given = context.arguments.values("SHELL");
  const std::string name = given.empty() ? "bash" : given.front();
  const auto *shell = std::ranges::find(shells, name, &Shell::name);
  if (shell == shells.end() || given.size() > 1)
    throw usage_error("there is no completion for \"" + name + "\", but for bash, zsh and fish");
  context.out.write(shell->script);
  return Exit::ok;
}

}  // namespace

Command completion_command() {
  return {"completion",
          "Print the script that completes command lines in bash, zsh or fish",
          {{"SHELL", "The shell (default: bash)", Argument::Count::any}},
          {{"--candidates", "", "Print what the last of these words may become"}},
          run};
}

}  // namespace velkor::ctl
