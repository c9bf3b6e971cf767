include(GNUInstallDirs)
