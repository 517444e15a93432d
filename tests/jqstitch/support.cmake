# What runs the built program, and pictures for it: for the tests of several rooms.
find_package(OpenCV 4 REQUIRED COMPONENTS core imgproc imgcodecs)
find_package(nlohmann_json REQUIRED)

add_library(jqstitch_test_support STATIC
  jqstitch/run_program.cpp jqstitch/run_program.h
  jqstitch/running_program.cpp jqstitch/running_program.h
  jqstitch/scene_frames.cpp jqstitch/scene_frames.h)
target_include_directories(jqstitch_test_support PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_compile_definitions(jqstitch_test_support
  PUBLIC JQSTITCH_PROGRAM="$<TARGET_FILE:jqstitch>")
target_link_libraries(jqstitch_test_support PUBLIC
  GTest::gtest opencv_core opencv_imgproc opencv_imgcodecs nlohmann_json::nlohmann_json)
