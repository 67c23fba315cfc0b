cmake_minimum_required(VERSION 3.25)

# Writes HEADER with the date, in UTC, of what is built: that of SOURCE_DATE_EPOCH in the environment,
# else that of the last commit when SOURCES is a repository. It is never the present date, so that
# equal sources give equal programs. Without any of them the header says that there is none.
set(epoch "$ENV{SOURCE_DATE_EPOCH}")
if(NOT epoch STREQUAL "" AND NOT epoch MATCHES "^[0-9]+$")
  message(FATAL_ERROR "SOURCE_DATE_EPOCH is '${epoch}', and not a number of seconds")
endif()

# Sources that lie in somebody else's repository have no part in its commits.
if(epoch STREQUAL "" AND EXISTS ${SOURCES}/.git)
  find_program(git git)
  if(git)
    execute_process(
      COMMAND ${git} -C ${SOURCES} -c log.showSignature=false log -1 --format=%ct
      OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(commit MATCHES "^[0-9]+$")
      set(epoch ${commit})
    endif()
  endif()
endif()

set(date "")
if(NOT epoch STREQUAL "")
  set(ENV{SOURCE_DATE_EPOCH} ${epoch})
  string(TIMESTAMP date "%Y-%m-%d" UTC)
endif()
file(CONFIGURE OUTPUT ${HEADER} @ONLY CONTENT [=[
#pragma once

#include <string_view>

namespace quillbrook {

/// "2026-01-31", or empty when the sources have no date.
inline constexpr std::string_view kBuildDate = "@date@";

} // namespace quillbrook
]=])
