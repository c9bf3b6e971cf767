"""No logging configuration of the folder or the environment reaches the tool."""
import os
import unittest

from tool_case import WALL, ToolTest

PROPERTIES = """log4j.debug=true
log4j.rootLogger=TRACE, file, console
log4j.appender.file=org.apache.log4j.FileAppender
log4j.appender.file.File={0}/was-configured.log
log4j.appender.file.layout=org.apache.log4j.SimpleLayout
log4j.appender.console=org.apache.log4j.ConsoleAppender
log4j.appender.console.layout=org.apache.log4j.SimpleLayout
"""
XML = """<?xml version="1.0"?><log4j:configuration xmlns:log4j="http://jakarta.apache.org/log4j/" debug="true">
<appender name="file" class="org.apache.log4j.FileAppender"><param name="File" value="{0}/was-configured.log"/>
<layout class="org.apache.log4j.SimpleLayout"/></appender>
<root><priority value="trace"/><appender-ref ref="file"/></root></log4j:configuration>
"""
NAMES = {"log4cxx.properties": PROPERTIES, "log4j.properties": PROPERTIES, "log4cxx.xml": XML, "log4j.xml": XML}


class Logging(ToolTest):
    def test_configuration_files_in_the_folder_are_not_read(self):
        for name, content in NAMES.items():
            self.file(name, content.format(self.folder))
        self.assertIn("4 by 3 m", self.text_of("info", WALL))
        self.assertEqual(sorted(os.listdir(self.folder)), sorted(NAMES))

    def test_configuration_files_in_the_environment_are_not_read(self):
        for name, content in NAMES.items():
            path = self.file(name, content.format(self.folder))
            for variable in ("LOG4CXX_CONFIGURATION", "log4j.configuration"):
                with self.subTest(name=name, variable=variable):
                    self.assertIn("4 by 3 m", self.text_of("info", WALL, env=dict(os.environ, **{variable: str(path)})))
        self.assertEqual(sorted(os.listdir(self.folder)), sorted(NAMES))


if __name__ == "__main__":
    unittest.main()
