# Builds the schema file into the library, one literal a line: some compilers limit a literal's
# length, and a file beside the library could be lost.
function(ombrix_schema_text source target)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} text)
  string(REPLACE "\\" "\\\\" text "${text}")
  string(REPLACE "\"" "\\\"" text "${text}")
  string(REPLACE "\n" "\\n\"\n    \"" text "${text}")
  file(CONFIGURE OUTPUT ${target} @ONLY CONTENT
"#include \"database/schema_text.h\"

namespace ombrix {
const std::string_view kSchemaText =
    \"@text@\";
}
")
endfunction()
