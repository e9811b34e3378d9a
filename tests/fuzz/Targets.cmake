# Every fuzz target, written once: name, then the decoder it drives when it drives one.
# Used by the libFuzzer build (tests/fuzz) and by the replays in the ordinary build.
set(QUORBEL_FUZZ_TARGETS jpeg:DecodeJpegPicture png:DecodePng tiff:DecodeTiff gif:DecodeGif
    bmp:DecodeBmp ico:DecodeIco webp:DecodeWebp avif:DecodeAvif heif:DecodeHeif
    roundtrip: metadata: ini:)

# Adds one executable per target, named prefix + name, from its entry source plus extra
# sources, linked to libs.
function(quorbel_fuzz_executables prefix)
  cmake_parse_arguments(F "" "" "SOURCES;LIBS" ${ARGN})
  set(dir ${PROJECT_SOURCE_DIR}/tests/fuzz)
  foreach(target ${QUORBEL_FUZZ_TARGETS})
    string(REPLACE ":" ";" parts "${target}:")
    list(GET parts 0 name)
    list(GET parts 1 decoder)
    if(name STREQUAL "roundtrip")
      set(source ${dir}/FuzzRoundTrip.cpp)
    elseif(name STREQUAL "ini")
      set(source ${dir}/FuzzIni.cpp)
    elseif(name STREQUAL "metadata")
      set(source ${dir}/FuzzMetadata.cpp)
    else()
      set(source ${dir}/FuzzDecoder.cpp)
    endif()
    add_executable(${prefix}${name} ${source} ${F_SOURCES})
    target_link_libraries(${prefix}${name} PRIVATE quorbel_output quorbel_settings ${F_LIBS})
    if(decoder)
      target_compile_definitions(${prefix}${name} PRIVATE QUORBEL_FUZZ_DECODER=${decoder})
    endif()
  endforeach()
endfunction()
