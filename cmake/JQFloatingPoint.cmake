# The one place for floating-point flags. Results are promised bit for bit, so a
# product and a sum are never contracted into one rounding, and no option that
# reorders or approximates is ever added.
if(MSVC)
  add_compile_options(/fp:strict)
else()
  add_compile_options(-ffp-contract=off)
endif()
