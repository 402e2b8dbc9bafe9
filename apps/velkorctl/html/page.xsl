<?xml version="1.0" encoding="UTF-8"?>
<!-- SPDX-License-Identifier: LGPL-2.1-or-later -->
<!-- Turns the display document into a page. All content of a posting becomes text, except TagInfo,
     which has been reduced before. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="no" doctype-system="about:legacy-compat"/>
  <xsl:param name="policy"/>
  <xsl:param name="style"/>
  <xsl:param name="script"/>
  <xsl:param name="notice"/>

  <xsl:template match="/Events">
    <html lang="nl">
      <head>
        <meta charset="utf-8"/>
        <meta http-equiv="Content-Security-Policy" content="{$policy}"/>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <meta name="referrer" content="no-referrer"/>
        <title>ZOX-postings</title>
        <style><xsl:value-of select="$style"/></style>
        <script><xsl:value-of select="$script" disable-output-escaping="yes"/></script>
      </head>
      <body>
        <header>
          <h1>ZOX-postings</h1>
          <p class="about">
            <span class="count" role="status">
              <xsl:variable name="count" select="count(Part/Event | CatEvents/Part/Event)"/>
              <xsl:value-of select="$count"/>
              <xsl:choose>
                <xsl:when test="$count = 1"> posting</xsl:when>
                <xsl:otherwise> postings</xsl:otherwise>
              </xsl:choose>
            </span>
            <xsl:text>, </xsl:text>
            <xsl:value-of select="DateTimeGenerated[1]"/>
          </p>
          <xsl:if test="$notice != ''">
            <p class="notice" role="alert"><xsl:value-of select="$notice"/></p>
          </xsl:if>
        </header>
        <main>
          <xsl:choose>
            <xsl:when test="CatEvents">
              <xsl:apply-templates select="CatEvents"/>
            </xsl:when>
            <xsl:otherwise>
              <xsl:call-template name="rows"/>
            </xsl:otherwise>
          </xsl:choose>
        </main>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="CatEvents">
    <section>
      <h2>
        <xsl:value-of select="@catName"/>
        <xsl:text> (</xsl:text>
        <xsl:value-of select="count(Part/Event)"/>
        <xsl:text>)</xsl:text>
      </h2>
      <xsl:call-template name="rows"/>
    </section>
  </xsl:template>

  <!-- The rows of the current element in the order of the document. A browser numbers the items of
       an "ol" anew whenever one of them is hidden, which takes minutes in a long list. -->
  <xsl:template name="rows">
    <div class="events" role="list">
      <xsl:apply-templates select="Part"/>
    </div>
  </xsl:template>

  <!-- Some rows, which a browser lays out when they come into view. -->
  <xsl:template match="Part">
    <div class="part" role="none">
      <xsl:apply-templates select="Event"/>
    </div>
  </xsl:template>

  <xsl:template match="Event">
    <div class="event" role="listitem" data-id="{PostID[1]}" data-stamp="{Stamp[1]}"
         data-rating="{Rating[1]}" data-category="{@category}" data-state="{@state}">
      <xsl:if test="Status[1] = -2 or Status[1] = -3">
        <xsl:attribute name="class">event deleted</xsl:attribute>
      </xsl:if>
      <h3><xsl:value-of select="Title[1]"/></h3>
      <p class="facts">
        <xsl:if test="Stamp[1] &gt;= /Events/PrevCheck[1]">
          <span class="new">Nieuw</span>
        </xsl:if>
        <span><xsl:value-of select="@moment"/></span>
        <span><xsl:value-of select="@category"/></span>
        <span class="poster"><xsl:value-of select="Poster[1]"/></span>
        <span>Nr. <xsl:value-of select="PostID[1]"/></span>
        <span>Waardering <xsl:value-of select="Rating[1]"/></span>
        <xsl:if test="Newsgroups">
          <span><xsl:for-each select="Newsgroups">
            <xsl:if test="position() &gt; 1">, </xsl:if>
            <xsl:value-of select="."/>
          </xsl:for-each></span>
        </xsl:if>
        <xsl:if test="Watchlist[1] = 1"><span>Op de watchlist</span></xsl:if>
      </p>
      <details>
        <summary aria-label="Meer over {Title[1]}">Meer</summary>
        <xsl:copy-of select="TagInfo[1]/node()"/>
        <xsl:for-each select="Ann[1] | Des[1] | Sig[1]">
          <p class="long"><xsl:value-of select="."/></p>
        </xsl:for-each>
        <xsl:if test="MP3/Track">
          <ol><xsl:for-each select="MP3/Track"><li><xsl:value-of select="."/></li></xsl:for-each></ol>
        </xsl:if>
        <xsl:for-each select="Reactie">
          <p class="long"><b><xsl:value-of select="Author[1]"/></b>
            <xsl:text> </xsl:text><xsl:value-of select="Datum[1]"/><br/>
            <xsl:value-of select="Body[1]"/></p>
        </xsl:for-each>
      </details>
    </div>
  </xsl:template>
</xsl:stylesheet>
