# What brings a system to the player. All of them run it through the program's own window.
add_library(corvin_systemfixture STATIC systemfixture.cpp systemfixture.h reinstallformattest.cpp
                                        reinstallformattest.h)
target_link_libraries(corvin_systemfixture PUBLIC corvin_app corvin_testsupport
                                            PRIVATE corvin_flags LibArchive::LibArchive)
target_compile_definitions(corvin_systemfixture PUBLIC UNAR_PROGRAM="$<TARGET_FILE:corvin_unar>")
add_dependencies(corvin_systemfixture corvin_unar)

corvin_test(tst_updateserver USES corvin_systemfixture)
target_compile_definitions(tst_updateserver PRIVATE BUILT_IN_SERVER="${CORVIN_UPDATE_SERVER}")
corvin_test(tst_unpackedfolder USES corvin_systemfixture)
corvin_test(tst_backupcheck USES corvin_systemfixture)
corvin_test(tst_downloadmanager USES corvin_systemfixture)
corvin_test(tst_filedownload USES corvin_systemfixture)
corvin_test(tst_extraction USES corvin_systemfixture)
corvin_test(tst_systemupdate USES corvin_systemfixture)
corvin_test(tst_unplugtexts USES corvin_systemfixture)
corvin_test(tst_systemtransfer USES corvin_systemfixture)
corvin_test(tst_reinstall USES corvin_systemfixture)
corvin_test(tst_reinstallformat USES corvin_systemfixture TIMEOUT 300)
corvin_test(tst_reinstallformatstops USES corvin_systemfixture TIMEOUT 300)
